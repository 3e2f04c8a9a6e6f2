// Changes of generated tables: many kinds of indexes, several levels deep.

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "makestore/StoreBuilder.h"
#include "platform/jet/RandomUpdates.h"
#include "platform/jet/StoreFiles.h"
#include "platform/jet/engine/TableSource.h"
#include "platform/jet/format/IndexPage.h"
#include "support/FileFaults.h"
#include "support/ProgramFolder.h"

namespace {

namespace fs = std::filesystem;
using namespace jettest;
using jet::ColumnType;
using makestore::Index;

/// Hyphens make a key of about a thousand bytes, of which a page holds three.
std::u16string longKey(int number) {
  std::u16string text(250, u'-');
  for (std::size_t i = 0; i < 4; ++i, number /= 5) text[i] = u"aeimz"[number % 5];
  return text;
}

Index index(std::u16string name, std::vector<makestore::KeyPart> parts) {
  return {.name = std::move(name), .columns = std::move(parts)};
}

/// A table with an index of each kind.
void addManyIndexes(makestore::StoreBuilder& store) {
  makestore::StoreTable& table = store.table(u"Many");
  table.column({.name = u"id"})
      .column(makestore::Column::text(u"name", 255))
      .column(makestore::Column::text(u"note", 80))
      .column({.name = u"number", .type = ColumnType::Integer})
      .column({.name = u"amount", .type = ColumnType::Currency})
      .column({.name = u"when", .type = ColumnType::DateTime})
      .column({.name = u"guid", .type = ColumnType::Guid})
      .column({.name = u"on", .type = ColumnType::Boolean});
  Index ignoring = index(u"down", {{u"name", false}});
  ignoring.ignoreNulls = true;
  Index unique = index(u"unique", {{u"note", true}, {u"number", false}, {u"id", true}});
  unique.unique = true;
  Index packed = index(u"packed", {{u"name", true}, {u"when", false}});
  packed.packed = true;
  table.index(Index::primaryKey(u"id"))
      .index(Index::plain(u"name"))
      .index(ignoring)
      .index(unique)
      .index(packed)
      .index(index(u"amount", {{u"amount", false}, {u"on", true}}))
      .index(index(u"guid", {{u"guid", false}}));
  for (int id = 1; id <= 250; ++id) {
    const auto byte = static_cast<std::uint8_t>(id);
    table.row({std::int32_t{id}, id % 3 == 0 ? runtime::Variant() : longKey(id * 37),
               u"note " + std::u16string(static_cast<std::size_t>(id % 7), u'\u00e9'),
               static_cast<std::int16_t>(id % 11), runtime::Currency{id * 2500},
               runtime::Date{36000.0 + id % 5}, runtime::Guid{{byte, 1, byte}}, id % 2 == 0},
              id % 10 == 0 ? makestore::Placement::Moved : makestore::Placement::Plain);
  }
}

TEST(RandomUpdates, KeepMadeStoresSoundWhateverTheirIndexes) {
  for (const bool encoded : {false, true}) {
    const Scratch scratch;
    const fs::path file = scratch.folder() / "many.mdb";
    makestore::StoreBuilder store;
    addManyIndexes(store);
    if (encoded) store.encodingKey(0x1234567).referenceMaps();
    store.write(file);
    RandomUpdates updates(file, u"", 7);
    for (int round = 0; round < 2; ++round) {
      updates.run(150);
      EXPECT_EQ(updates.problems(), std::vector<std::string>());
    }
  }
}

TEST(IndexOnAMissingColumn, RefusesChangesOfItsOtherColumns) {
  const Scratch scratch;
  const fs::path file = scratch.folder() / "lacking.mdb";
  makestore::StoreBuilder store;
  store.table(u"Items")
      .column({.name = u"id"})
      .column({.name = u"group"})
      .column({.name = u"location"})
      .index(index(u"both", {{u"group", true}, {u"location", true}}))
      .row({std::int32_t{1}, std::int32_t{2}, std::int32_t{3}});
  jet::Bytes bytes = store.build();
  const jet::Bytes columns{1, 0, 1, 2, 0, 1, 0xFF, 0xFF};    // numbers 1 and 2, both ascending
  const auto found = std::ranges::find_end(bytes, columns);  // the system tables come first
  ASSERT_FALSE(found.empty());
  found.front() = 77;
  support::writeFile(file, bytes);
  Change change{
      u"Items", rowIdsOf(file, u"", u"Items").at(0), {{jet::ColumnIndex(2), std::int32_t{9}}}};
  EXPECT_NE(support::errorNumberOf([&] { makeChange(file, u"", change); }), 0);
  change.values = {{jet::ColumnIndex(0), std::int32_t{4}}};
  EXPECT_EQ(support::errorNumberOf([&] { makeChange(file, u"", change); }), 0);
}

/// Sets a leaf as the previous page of each node (links of nodes are not maintained); returns the
/// number of nodes.
int misleadNodes(const fs::path& file,
                 const std::vector<std::pair<std::uint32_t, std::uint32_t>>& nodesAndLeaves) {
  const jet::Layout& layout = jet::layoutOf(jet::Version::Jet4);
  std::fstream stream(file, std::ios::binary | std::ios::in | std::ios::out);
  for (const auto& [node, leaf] : nodesAndLeaves) {
    jet::Bytes link(4);
    jet::putU32(link, 0, leaf);
    stream.seekp(static_cast<std::streamoff>(node * layout.pageSize + layout.indexPrevious));
    stream.write(reinterpret_cast<const char*>(link.data()), 4);
  }
  return static_cast<int>(nodesAndLeaves.size());
}

TEST(DeepIndex, WrongLinksOfNodesDamageNoLeaf) {
  const Scratch scratch;
  const fs::path file = scratch.folder() / "links.mdb";
  makestore::StoreBuilder store;
  addManyIndexes(store);
  store.write(file);
  std::vector<std::pair<std::uint32_t, std::uint32_t>> nodes;
  const std::vector<jet::RowId> rows = rowIdsOf(file, u"", u"Many");
  {
    jet::Database database(file, u"the file", jet::Password{u""});
    const jet::TableSource& source = tableNamed(database, u"Many").source();
    std::uint32_t leaf = 0;
    for (std::uint32_t number = 6; number < source.pager.pageCount(); ++number) {
      const auto page = source.pager.read(jet::PageNumber(number), {});
      if (jet::PageNumber(jet::u32At(*page, 4)) != source.definitionPage) continue;
      if ((*page)[0] == static_cast<std::uint8_t>(jet::PageType::IndexLeaf)) leaf = number;
      if ((*page)[0] == static_cast<std::uint8_t>(jet::PageType::IndexNode) && leaf != 0)
        nodes.emplace_back(number, leaf);
    }
  }
  EXPECT_GT(misleadNodes(file, nodes), 20);
  for (std::size_t i = 0; i < rows.size(); i += 2) {
    const runtime::Variant value =
        i % 8 == 0 ? runtime::Variant() : longKey(static_cast<int>(i) * 91 + 5);
    makeChange(file, u"", {u"Many", rows[i], {{jet::ColumnIndex(1), value}}});
    jet::Database database(file, u"the file", jet::Password{u""});
    const auto walk = tableNamed(database, u"Many").walk(jet::IndexNumber(1), {});
    std::size_t walked = 0;
    while (walk->next()) ++walked;
    ASSERT_EQ(walked, rows.size()) << i;
  }
  jet::Database database(file, u"the file", jet::Password{u""});
  EXPECT_EQ(indexProblems(tableNamed(database, u"Many")), std::vector<std::string>());
}

}  // namespace
