// A change that a power cut interrupts at any point must lose nothing, and repeating it must leave
// the file sound.

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <map>
#include <set>

#include "makestore/ShopStore.h"
#include "makestore/StoreBuilder.h"
#include "platform/jet/CutEverywhere.h"
#include "platform/jet/FileShape.h"
#include "platform/jet/RandomUpdates.h"
#include "platform/jet/StoreFiles.h"
#include "platform/jet/WriteLog.h"
#include "platform/jet/engine/TableSource.h"
#include "platform/jet/format/DataPage.h"
#include "platform/jet/format/PageCipher.h"
#include "platform/jet/format/UsageMap.h"
#include "support/FileFaults.h"
#include "support/ProgramFolder.h"

namespace {

namespace fs = std::filesystem;
using namespace jettest;

/// Changes that empty an index's leaves one after the other.
std::vector<Change> emptying(const jet::Table& table) {
  std::vector<Change> changes;
  for (std::size_t i = 0; i < table.indexes().size(); ++i) {
    const jet::Index& index = table.indexes()[i];
    if (index.unique || table.column(index.columns[0].column).autonumber) continue;
    const auto walk = table.walk(jet::IndexNumber(i), {});
    while (walk->next())
      changes.push_back(
          {table.name(), walk->row().id(), {{index.columns[0].column, runtime::Null{}}}});
  }
  return changes;
}

/// Changes rows of one table, and interrupts those changes that are the first of a kind that is
/// still missing.
class KindSearch {
 public:
  KindSearch(const StoreFile& store, std::u16string table, std::set<std::string> missing,
             std::uint32_t seed)
      : password_(store.password),
        file_(scratch_.copy(store.path)),
        table_(std::move(table)),
        database_(file_, u"the file", jet::Password{password_}),
        shape_(shapeOf(tableNamed(database_, table_))),
        generator_(seed),
        missing_(std::move(missing)) {}

  /// Sets texts to random short and long ones.
  void byTexts(int tries) {
    const std::vector<jet::RowId> rows = rowIdsOf(file_, password_, table_);
    std::vector<jet::ColumnIndex> columns;
    std::vector<std::size_t> sizes;
    const std::vector<jet::ColumnDefinition>& all = tableNamed(database_, table_).columns();
    const std::size_t unit = database_.version() == jet::Version::Jet3 ? 1 : 2;
    for (std::size_t i = 0; i < all.size(); ++i) {
      if (all[i].type != jet::ColumnType::Text) continue;
      columns.emplace_back(i);
      sizes.push_back(all[i].length / unit);
    }
    const std::set<std::string> left{"leaf unlinked", "bound tightened"};  // left for byEmptying
    for (; tries > 0 && !std::ranges::includes(left, missing_); --tries) {
      const std::size_t which = generator_() % columns.size();
      const std::size_t least = generator_() % 3 == 0 ? 0 : sizes[which] * 3 / 4;
      std::u16string text;
      while (text.size() < sizes[which] && (text.size() < least || generator_() % 8 != 0))
        text.push_back(u"abcdefghijklmnopqrstuvwxyz\u00e9\u00f1-'"[generator_() % 30]);
      tryOut({table_, rows[generator_() % rows.size()], {{columns[which], text}}});
    }
  }

  /// Sets a column of each row.
  void byValues(jet::ColumnIndex column,
                const std::function<runtime::Variant(std::size_t)>& value) {
    const std::vector<jet::RowId> rows = rowIdsOf(file_, password_, table_);
    for (std::size_t i = 0; i < rows.size(); ++i) tryOut({table_, rows[i], {{column, value(i)}}});
  }

  void byEmptying() {
    for (const Change& change : emptying(tableNamed(database_, table_))) tryOut(change);
  }

  /// The kinds of changes that were not found.
  const std::set<std::string>& missing() const { return missing_; }
  int states() const { return states_; }

 private:
  void tryOut(const Change& change) {
    if (testing::Test::HasFailure() || missing_.empty()) return;
    const fs::path before = scratch_.folder() / "before.mdb";
    fs::copy_file(file_, before, fs::copy_options::overwrite_existing);
    shape_.body = bodyOf(tableNamed(database_, table_), change.row);
    const auto make = [&] {
      update(database_, tableNamed(database_, table_), change.row, change.values);
    };
    if (support::errorNumberOf(make) != 0) return;
    const jet::Table& table = tableNamed(database_, table_);
    FileShape after = shapeOf(table);
    after.body = bodyOf(table, change.row);
    std::string label;
    for (const std::string& kind : differencesBetween(std::exchange(shape_, after), after))
      if (missing_.erase(kind) > 0) label += kind + " ";
    if (label.empty()) return;
    SCOPED_TRACE(label);
    states_ += cutEverywhere(scratch_, before, password_, change);
  }

  Scratch scratch_;
  std::u16string password_;
  fs::path file_;
  std::u16string table_;
  jet::Database database_;
  FileShape shape_;
  std::mt19937 generator_;
  std::set<std::string> missing_;
  int states_ = 0;
};

/// A format of generated files, without a password.
struct FileFormat {
  const char* name;
  jet::Version version;
  std::uint32_t encodingKey;

  const jet::Layout& layout() const { return jet::layoutOf(version); }
  makestore::StoreBuilder store() const {
    return makestore::StoreBuilder().version(version).encodingKey(encodingKey);
  }
};

class CutMadeFile : public testing::TestWithParam<FileFormat> {};
class CutShop : public CutMadeFile {};

const auto kNameOfFormat = [](const auto& format) { return format.param.name; };
const auto kPlainFormats = testing::Values(FileFormat{"Jet3", jet::Version::Jet3, 0},
                                           FileFormat{"Jet4", jet::Version::Jet4, 0});
INSTANTIATE_TEST_SUITE_P(OfFormat, CutMadeFile, kPlainFormats, kNameOfFormat);
INSTANTIATE_TEST_SUITE_P(OfFormat, CutShop, kPlainFormats, kNameOfFormat);
// The encoding treats all pages alike, so only this suite also runs on encoded files.
INSTANTIATE_TEST_SUITE_P(OfEncodedFormat, CutShop,
                         testing::Values(FileFormat{"Jet3", jet::Version::Jet3, 0x5A17C3E9},
                                         FileFormat{"Jet4", jet::Version::Jet4, 0x5A17C3E9}),
                         kNameOfFormat);

const std::set<std::string> kAllKinds{"in its slot",   "moved",          "moved again",
                                      "moved back",    "leaf split",     "root grown",
                                      "leaf unlinked", "bound tightened"};

/// Shops in which changes of all these kinds happen. In the small Jet 3 shop the root of an index
/// is a leaf that can grow, in the other one rows have to move.
std::vector<makestore::ShopOptions> shopsFor(const FileFormat& format) {
  if (format.version == jet::Version::Jet4) return {makestore::tightShop()};
  std::vector<makestore::ShopOptions> shops;
  for (const int slots : {60, 150}) {
    makestore::ShopOptions& options = shops.emplace_back();
    options.version = format.version;
    options.slots = slots;
    options.products = slots - 30;
    options.moved = {9, 31};
    options.packedIndexes = true;
  }
  return shops;
}

TEST_P(CutShop, LosesNothing) {
  const Scratch scratch;
  std::set<std::string> missing = kAllKinds;
  int states = 0;
  for (makestore::ShopOptions options : shopsFor(GetParam())) {
    options.encodingKey = GetParam().encodingKey;
    const StoreFile file{scratch.folder() / "shop.mdb", kStorePassword};
    makestore::shopStore(options).write(file.path);
    KindSearch search(file, u"tblStock", missing, 3);
    search.byTexts(1500);
    search.byEmptying();
    missing = search.missing();
    states += search.states();
  }
  EXPECT_EQ(missing, std::set<std::string>());
  EXPECT_GT(states, 40);
}

TEST(AChange, CostsFourSyncsAndATightenedBoundOneMore) {
  const Scratch scratch;
  const fs::path file = scratch.folder() / "shop.mdb";
  makestore::ShopOptions options;
  options.slots = options.products = 1200;
  makestore::shopStore(options).write(file);
  jet::Database database(file, u"the file", jet::Password{kStorePassword});
  const auto stock = [&]() -> const jet::Table& { return tableNamed(database, u"tblStock"); };
  const jet::ColumnIndex name = stock().columnNamed(u"description").value();
  std::vector<jet::RowId> rows;
  {
    const auto walk = stock().walk(stock().indexOn({u"description"}).value(), {.notNull = true});
    while (walk->next()) rows.push_back(walk->row().id());
  }
  FileShape shape = shapeOf(stock());
  std::map<std::set<std::string>, int> seen;
  const std::set<std::string> plain{"in its slot"};
  const std::set<std::string> tightening{"in its slot", "bound tightened"};
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const std::string number = std::to_string(i);
    const std::u16string text = u"A" + std::u16string(number.begin(), number.end());
    WriteLog log(file);
    update(database, stock(), rows[i], std::vector<jet::ColumnValue>{{name, text}});
    FileShape after = shapeOf(stock());
    after.body = bodyOf(stock(), rows[i]);
    const std::set<std::string> kinds = differencesBetween(std::exchange(shape, after), after);
    // One sync each after the new entries, their counters, the row and the removal of the old
    // entries; one more after a tightened bound, which the next change uses.
    if (kinds == plain || kinds == tightening) {
      EXPECT_EQ(log.syncs(), kinds == plain ? 4 : 5);
    }
    if (++seen[kinds] == 2 && kinds == tightening) break;
  }
  EXPECT_EQ(seen[tightening], 2);
  EXPECT_GT(seen[plain], 2);
}

TEST_P(CutMadeFile, LosesNothingOfLongValues) {
  const Scratch scratch;
  const fs::path file = scratch.folder() / "long.mdb";
  makestore::StoreBuilder store = GetParam().store();
  store.table(u"Notes")
      .column({.name = u"id"})
      .column({.name = u"note", .type = jet::ColumnType::Memo})
      .index(makestore::Index::primaryKey(u"id"))
      .row({std::int32_t{1}, std::u16string(2000, u'a')})
      .row({std::int32_t{2}, std::u16string(700, u'b')});
  store.write(file);
  Change change{u"Notes", rowIdsOf(file, u"", u"Notes").at(0), {}};
  for (const std::size_t length : {60U, 1200U, 9000U, 0U}) {
    SCOPED_TRACE(length);
    change.values = {{jet::ColumnIndex(1), std::u16string(length, u'\u20ac')}};
    cutEverywhere(scratch, file, u"", change);
    makeChange(file, u"", change);
  }
}

TEST(CutUpdate, LosesNothingWhereTheOldTextHasNoKnownKey) {
  const Scratch scratch;
  const fs::path file = scratch.folder() / "unknown.mdb";
  makestore::StoreBuilder store;
  makestore::StoreTable& table = store.table(u"Table");
  table.column({.name = u"id"}).column(makestore::Column::text(u"Unicode", 50));
  table.index(makestore::Index::primaryKey(u"id")).index(makestore::Index::plain(u"Unicode"));
  for (std::int32_t id = 1; id <= 7; ++id)
    table.row({id, u"\u20ac\u20ac" + std::u16string(3, u'a')});
  // Characters without a known key replace the euro signs; the index keeps its entries.
  jet::Bytes bytes = store.build();
  const jet::Bytes euros{0xAC, 0x20, 0xAC, 0x20};
  int replaced = 0;
  for (auto at = bytes.begin();; ++replaced) {
    at = std::search(at, bytes.end(), euros.begin(), euros.end());
    if (at == bytes.end()) break;
    *at++ = 0x22;
    *at++ = 0x6F;
  }
  EXPECT_EQ(replaced, 7);
  support::writeFile(file, bytes);
  const std::vector<jet::RowId> rows = rowIdsOf(file, u"", u"Table");
  EXPECT_EQ(rows.size(), 7U);
  for (const jet::RowId row : rows)
    cutEverywhere(scratch, file, u"", {u"Table", row, {{jet::ColumnIndex(1), u"now known"}}});
}

runtime::Variant noText(std::size_t) {
  return runtime::Null{};
}

/// Adds a table with two long text columns, each with an index of its own; the second column is
/// null.
void addTexts(makestore::StoreBuilder& store, std::u16string_view name, std::size_t rows,
              const std::function<runtime::Variant(std::size_t)>& upward = noText) {
  makestore::StoreTable& table = store.table(name);
  table.column({.name = u"id"})
      .column(makestore::Column::text(u"upward", 255))
      .column(makestore::Column::text(u"downward", 255))
      .index(makestore::Index::primaryKey(u"id"))
      .index(makestore::Index::plain(u"upward"))
      .index({.name = u"downward",
              .columns = {{u"downward", false}, {u"id", true}},
              .unique = true,
              .ignoreNulls = true});
  for (std::size_t row = 0; row < rows; ++row)
    table.row({static_cast<std::int32_t>(row + 1), upward(row)});
}

TEST_P(CutMadeFile, LosesNothingWhereADeepIndexGrowsAndShrinks) {
  const Scratch scratch;
  const fs::path file = scratch.folder() / "deep.mdb";
  makestore::StoreBuilder store = GetParam().store();
  // A page holds three keys: in Jet 4 hyphens make keys of a thousand bytes, in Jet 3 accents make
  // keys of five hundred. The first index begins two levels deep.
  const std::size_t rows = GetParam().version == jet::Version::Jet4 ? 50 : 70;
  const char16_t filler = GetParam().version == jet::Version::Jet4 ? u'-' : u'\u00e9';
  const auto longText = [filler](std::size_t row) {
    std::u16string text(250, filler);
    for (std::size_t i = 0; row > 0; row /= 5, ++i) text[i] = u"aeimz"[(row + i) % 5];
    return text;
  };
  addTexts(store, u"Texts", rows, longText);
  store.write(file);
  KindSearch search({file, u""}, u"Texts",
                    {"root grown to level 3", "node split at level 2", "leaf unlinked",
                     "node unlinked at level 1"},
                    3);
  search.byValues(jet::ColumnIndex(1),
                  [&](std::size_t row) { return longText(row * 37 % rows + rows); });
  search.byValues(jet::ColumnIndex(2), [&](std::size_t row) { return longText(row + 1); });
  search.byValues(jet::ColumnIndex(2), noText);
  search.byValues(jet::ColumnIndex(1), noText);
  EXPECT_EQ(search.missing(), std::set<std::string>());
}

/// Changes the rows of one page of a file.
void changePage(const FileFormat& format, const fs::path& file, jet::PageNumber number,
                const std::function<void(jet::DataPageEditor&)>& change) {
  const jet::Layout& layout = format.layout();
  std::fstream stream(file, std::ios::binary | std::ios::in | std::ios::out);
  jet::Bytes page(layout.pageSize);
  const auto offset = static_cast<std::streamoff>(number.value() * page.size());
  stream.seekg(offset);
  stream.read(reinterpret_cast<char*>(page.data()), static_cast<std::streamsize>(page.size()));
  jet::cipherPage(format.encodingKey, number, page);
  jet::DataPageEditor rows(layout, page, {});
  change(rows);
  jet::cipherPage(format.encodingKey, number, page);
  stream.seekp(offset);
  stream.write(reinterpret_cast<const char*>(page.data()),
               static_cast<std::streamsize>(page.size()));
}

/// Lengthens the page's last row, which is a usage map, until the page is full.
void fillMapPage(jet::DataPageEditor& rows) {
  const jet::SlotNumber last(rows.slotCount() - 1);
  const jet::ByteView map = rows.bytes(last);
  jet::Bytes longer(map.begin(), map.end());
  longer.resize(longer.size() + rows.freeBytes());
  ASSERT_TRUE(rows.replace(last, longer, jet::SlotMark::Row));
}

TEST_P(CutMadeFile, LosesNothingWhereUsageMapsGrow) {
  const jet::Layout& layout = GetParam().layout();
  const std::size_t window = jet::UsageMap::empty(layout).windowSize();
  const Scratch scratch;
  const fs::path file = scratch.folder() / "maps.mdb";
  makestore::StoreBuilder store = GetParam().store();
  addTexts(store, u"Early", 30);
  makestore::StoreTable& bulk = store.table(u"Bulk");
  const std::size_t length = layout.longestRow / 8;  // seven of these values fill a page
  for (const char16_t* name : {u"a", u"b", u"c", u"d", u"e", u"f", u"g"})
    bulk.column({.name = name, .type = jet::ColumnType::Binary, .length = length});
  for (int row = 0; row < 140; ++row)
    bulk.row(std::vector<runtime::Variant>(7, runtime::Binary(length, 1)));
  addTexts(store, u"Late", 30);
  store.freePages(window - 52);  // the file gets longer than a map of the usual length covers
  store.write(file);
  // No page of the file is free: new pages come far after those of the tables.
  const auto pages = static_cast<std::uint32_t>(fs::file_size(file) / layout.pageSize);
  changePage(GetParam(), file, jet::kGlobalMapPage, [pages](jet::DataPageEditor& rows) {
    jet::UsageMap map = jet::UsageMap::decode(rows.bytes(jet::SlotNumber(0)), {});
    for (std::uint32_t page = 0; page < pages; ++page) map.set(jet::PageNumber(page), false);
    ASSERT_TRUE(rows.replace(jet::SlotNumber(0), map.encode(), jet::SlotMark::Row));
  });
  const auto cut = [&](const std::u16string& table, const std::set<std::string>& kinds) {
    KindSearch search({file, u""}, table, kinds, 5);
    search.byTexts(400);
    EXPECT_EQ(search.missing(), std::set<std::string>());
  };
  cut(u"Early", {"map lengthened", "global map lengthened"});
  cut(u"Late", {"map shifted"});
  jet::PageNumber mapPage;
  {
    jet::Database database(file, u"the file", jet::Password{u""});
    mapPage = tableNamed(database, u"Early").source().definition.ownedPages.page;
  }
  changePage(GetParam(), file, mapPage, fillMapPage);
  changePage(GetParam(), file, jet::kGlobalMapPage, fillMapPage);
  cut(u"Early", {"map turned into references", "global map turned into references"});
}

TEST_P(CutMadeFile, LosesNothingWhereMapsGainBitmaps) {
  const Scratch scratch;
  const fs::path file = scratch.folder() / "bitmaps.mdb";
  makestore::StoreBuilder store = GetParam().store();
  addTexts(store.referenceMaps(), u"Texts", 30);
  store.write(file);
  const jet::RowPointer freePages{jet::kGlobalMapPage, jet::SlotNumber(0)};
  jet::RowPointer pagesWithRoom;
  {
    jet::Database database(file, u"the file", jet::Password{u""});
    pagesWithRoom = tableNamed(database, u"Texts").source().definition.freePages;
  }
  // No page is free or has room, so that these two maps need no bitmap yet.
  for (const jet::RowPointer at : {freePages, pagesWithRoom})
    changePage(GetParam(), file, at.page, [at](jet::DataPageEditor& rows) {
      jet::UsageMap map = jet::UsageMap::decode(rows.bytes(at.slot), {});
      std::ranges::fill(map.bitmapPages, jet::kNoPage);
      ASSERT_TRUE(rows.replace(at.slot, map.encode(), jet::SlotMark::Row));
    });
  KindSearch search({file, u""}, u"Texts", {"map given a bitmap", "global map given a bitmap"}, 5);
  search.byTexts(400);
  EXPECT_EQ(search.missing(), std::set<std::string>());
}

}  // namespace
