#include <gtest/gtest.h>

#include <algorithm>
#include <concepts>
#include <random>
#include <type_traits>

#include "platform/jet/StoreFiles.h"
#include "platform/jet/engine/Pager.h"
#include "platform/jet/engine/RowReader.h"
#include "platform/jet/engine/TableSource.h"
#include "platform/jet/format/DataPage.h"
#include "platform/jet/format/Header.h"
#include "platform/jet/format/IndexPage.h"
#include "platform/jet/format/LongValue.h"
#include "platform/jet/format/PageCipher.h"
#include "platform/jet/format/PropertyBlob.h"
#include "platform/jet/format/RowContent.h"
#include "platform/jet/format/StoredText.h"
#include "platform/jet/format/TableDefinition.h"

namespace {

using namespace jettest;
using jet::Bytes;
using jet::Version;

constexpr Version kVersions[] = {Version::Jet3, Version::Jet4};

// Swapped arguments must not compile.
template <class A, class B>
constexpr bool kUnrelated = !std::is_convertible_v<A, B> && !std::is_convertible_v<B, A> &&
                            !std::is_constructible_v<A, B> && !std::is_constructible_v<B, A> &&
                            !std::equality_comparable_with<A, B>;
template <class... Numbers>
constexpr bool kIsOnlyANumberByName = ((!std::is_convertible_v<int, Numbers> &&
                                        !std::is_convertible_v<Numbers, int> &&
                                        !std::is_constructible_v<int, Numbers>)&&...);
static_assert(kIsOnlyANumberByName<jet::PageNumber, jet::SlotNumber, jet::ColumnNumber,
                                   jet::ColumnIndex, jet::VariableSlot, jet::IndexNumber,
                                   jet::LogicalIndexNumber, jet::ObjectId>);
static_assert(kUnrelated<jet::PageNumber, jet::SlotNumber>);
static_assert(kUnrelated<jet::ColumnNumber, jet::ColumnIndex>);
static_assert(kUnrelated<jet::IndexNumber, jet::LogicalIndexNumber>);
static_assert(kUnrelated<jet::RowPointer, jet::RowId>);
template <class Function, class... Arguments>
constexpr bool kRefuses = !std::is_invocable_v<Function, Arguments...>;
static_assert(kRefuses<decltype(&jet::Row::isNull), const jet::Row&, jet::ColumnNumber>);
static_assert(kRefuses<decltype(&jet::Row::isNull), const jet::Row&, int>);
static_assert(kRefuses<decltype(&jet::DataPage::slot), const jet::DataPage&, jet::PageNumber>);
static_assert(kRefuses<decltype(&jet::RowReader::find), jet::RowReader&, jet::RowPointer>);
static_assert(kRefuses<decltype(jet::cipherPage), jet::PageNumber, std::uint32_t, jet::ByteSpan>);

TEST(Header, KeepsPasswordAndEncodingKeyUnderTheirMasks) {
  for (const Version version : kVersions) {
    jet::Header header;
    header.version = version;
    header.password = u"w7rt3q8814Z";
    header.encodingKey = 0x5A17C3E9;
    header.creationDate = 38000.75;
    const Bytes page = header.encode();
    EXPECT_EQ(page.size(), jet::layoutOf(version).pageSize);
    const std::string plain(page.begin(), page.end());
    EXPECT_EQ(plain.find("w7rt"), std::string::npos);
    const auto read = jet::Header::decode(page);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->version, version);
    EXPECT_EQ(read->password, header.password);
    EXPECT_EQ(read->encodingKey, header.encodingKey);
    EXPECT_EQ(read->codePage, 1252);
    EXPECT_EQ(read->sortLanguage, 0x409);
  }
  EXPECT_FALSE(jet::Header::decode(Bytes(0x98)));
}

TEST(StoredText, IsCompressedOnlyWhereEachCharacterHasAByte) {
  const auto stored = [](std::u16string_view text) {
    return *jet::encodeText(Version::Jet4, text, true);
  };
  EXPECT_EQ(stored(u"abc"), (Bytes{0xFF, 0xFE, 'a', 'b', 'c'}));
  EXPECT_EQ(stored(u"ab"), (Bytes{'a', 0, 'b', 0}));
  EXPECT_EQ(stored(u"a\u20acc"), (Bytes{'a', 0, 0xAC, 0x20, 'c', 0}));
  EXPECT_EQ(stored(std::u16string(1025, u'x')).size(), 2050U);
  std::u16string text;
  jet::decodeText(Version::Jet4, Bytes{0xFF, 0xFE, 'a', 0, 0xAC, 0x20, 'b', 0, 0, 'c'}, text);
  EXPECT_EQ(text, u"a\u20acbc");
  EXPECT_EQ(jet::encodeText(Version::Jet3, u"\u20ac", false), Bytes{0x80});
  EXPECT_FALSE(jet::encodeText(Version::Jet3, u"\u0142", false));
}

TEST(Row, ComesBackWhateverItsLengthAndPadding) {
  std::mt19937 random(2);
  for (const Version version : kVersions) {
    for (int round = 0; round < 3000; ++round) {
      jet::RowParts parts;
      const std::size_t slots = random() % 12;
      parts.columnCount = slots + 3 + random() % 20;
      parts.hasValue.resize(parts.columnCount);
      for (std::size_t i = 0; i < parts.columnCount; ++i) parts.hasValue[i] = random() % 2 == 0;
      parts.fixedArea.assign(random() % 60, 0x5A);
      parts.hasVariable = slots > 0;
      for (std::size_t i = 0; i < slots; ++i)
        parts.variable.emplace_back(random() % 150, static_cast<std::uint8_t>(i + 1));
      const std::size_t shortest = parts.encode(version).size();
      const std::size_t wanted = parts.hasVariable ? shortest + random() % 300 : shortest;
      const Bytes row = parts.encode(version, wanted);
      // The wanted length may have no room for one more jump.
      EXPECT_GE(row.size(), wanted);
      EXPECT_LE(row.size(), wanted + 1);
      const jet::RowContent read(version, row, parts.hasVariable, {});
      for (std::size_t i = 0; i < parts.columnCount; ++i)
        ASSERT_EQ(read.hasValue(jet::ColumnNumber(i)), parts.hasValue[i]);
      ASSERT_TRUE(std::ranges::equal(read.fixedArea(), parts.fixedArea));
      for (std::size_t i = 0; i < slots; ++i) {
        const auto value = read.variable(jet::VariableSlot(i));
        ASSERT_TRUE(value && std::ranges::equal(*value, parts.variable[i])) << "slot " << i;
      }
      ASSERT_FALSE(read.hasValue(jet::ColumnNumber(parts.columnCount)));
      ASSERT_FALSE(read.variable(jet::VariableSlot(slots)));
    }
  }
}

TEST(DataPage, KeepsEveryRowThroughChanges) {
  std::mt19937 random(3);
  for (const Version version : kVersions) {
    const jet::Layout& layout = jet::layoutOf(version);
    Bytes page = jet::DataPageEditor::newPage(layout, jet::PageNumber(7));
    std::vector<std::optional<Bytes>> model;
    int refused = 0;
    for (int step = 0; step < 4000; ++step) {
      jet::DataPageEditor editor(layout, page, {});
      const Bytes row(4 + random() % 120, static_cast<std::uint8_t>(step));
      const std::size_t slot = model.empty() ? 0 : random() % model.size();
      const jet::SlotNumber number(slot);
      switch (random() % 4) {
        case 0:
          if (const auto added = editor.add(row, jet::SlotMark::Row)) {
            if (added->value() == model.size()) model.emplace_back();
            ASSERT_FALSE(model[added->value()]);
            model[added->value()] = row;
          }
          break;
        case 1:
          if (model.empty() || !model[slot]) break;
          if (editor.replace(number, row, jet::SlotMark::Row))
            model[slot] = row;
          else
            ++refused;
          break;
        case 2:
          if (model.empty() || !model[slot]) break;
          editor.markDeleted(number);
          model[slot].reset();
          break;
        default:
          editor.squeeze();
          ASSERT_EQ(editor.deadBytes(), 0U);
      }
      const jet::DataPage read(layout, page, {});
      ASSERT_EQ(read.slotCount(), model.size());
      std::size_t used = 0;
      for (std::size_t i = 0; i < model.size(); ++i) {
        const jet::Slot each = read.slot(jet::SlotNumber(i));
        used += each.length;
        ASSERT_EQ(each.isRow(), model[i].has_value());
        ASSERT_TRUE(!model[i] || std::ranges::equal(read.bytes(each), *model[i]));
      }
      ASSERT_EQ(jet::u16At(page, 2), layout.pageSize - layout.dataSlots - 2 * model.size() - used);
    }
    EXPECT_GT(refused, 10);
  }
}

TEST(IndexPage, LeavesOutACommonPrefixOnlyWhereThePageIsFull) {
  for (const Version version : kVersions) {
    const jet::Layout& layout = jet::layoutOf(version);
    jet::IndexPage leaf;
    leaf.owner = jet::PageNumber(9);
    Bytes key(20, 0x4A);
    std::optional<Bytes> page = leaf.encode(layout);
    for (std::uint8_t i = 0; page; ++i) {
      key.back() = i;
      leaf.entries.push_back(jet::IndexEntry::of(key, {jet::PageNumber(300), jet::SlotNumber(i)}));
      const std::size_t size = 24 * leaf.entries.size();
      page = leaf.encode(layout);
      if (!page) break;
      const jet::IndexPageView view(layout, *page, {});
      const std::size_t prefix = version == Version::Jet3 ? (*page)[layout.indexPrefix]
                                                          : jet::u16At(*page, layout.indexPrefix);
      EXPECT_EQ(prefix, size <= layout.indexCapacity() ? 0U : 19U);
      EXPECT_EQ(view.lowerBound(leaf.entries.back().bytes), leaf.entries.size() - 1);
      EXPECT_EQ(view.entry(leaf.entries.size() - 1).row(),
                (jet::RowId{jet::PageNumber(300), jet::SlotNumber(i)}));
      ASSERT_LT(i, 255);
      const std::size_t used = size - prefix * (leaf.entries.size() - 1);
      EXPECT_EQ(jet::u16At(*page, 2), layout.indexCapacity() - used);
      if (leaf.entries.size() == 200) break;
    }
    leaf.leaf = false;
    EXPECT_FALSE(leaf.encode(layout)) << "a node's entries are written in full";
  }
}

TEST(IndexPage, OfFilesOfAllKindsComesBackFromItsEntries) {
  int pages = 0;
  for (const StoreFile& file : filesOfAllKinds()) {
    jet::Pager pager(file.path, u"");
    for (std::uint32_t number = 1; number < pager.pageCount(); ++number) {
      const jet::Pager::Page page = pager.read(jet::PageNumber(number), {});
      if ((*page)[0] != 3 && (*page)[0] != 4) continue;
      const jet::IndexPage open = jet::IndexPage::decode(pager.layout(), *page, {});
      const auto again = open.encode(pager.layout());
      ASSERT_TRUE(again);
      const jet::IndexPage read = jet::IndexPage::decode(pager.layout(), *again, {});
      ASSERT_EQ(read.entries.size(), open.entries.size());
      for (std::size_t i = 0; i < open.entries.size(); ++i) {
        ASSERT_EQ(read.entries[i].bytes, open.entries[i].bytes);
        ASSERT_EQ(read.entries[i].child, open.entries[i].child);
      }
      EXPECT_EQ(std::tuple(read.leaf, read.owner, read.previous, read.next, read.tail, read.level),
                std::tuple(open.leaf, open.owner, open.previous, open.next, open.tail, open.level));
      ++pages;
    }
  }
  EXPECT_GT(pages, 150);
}

TEST(TableDefinition, OfFilesOfAllKindsComesBackFromItsParts) {
  int definitions = 0;
  for (const StoreFile& file : filesOfAllKinds()) {
    jet::Database database(file.path, u"", jet::Password{file.password});
    for (const jet::CatalogObject& object : objectsOf(file.path)) {
      if (object.kind != jet::ObjectKind::Table) continue;
      const jet::TableSource& source = database.table(object).source();
      const jet::Location location = source.location(source.definitionPage);
      std::vector<jet::PageNumber> chain;
      const Bytes original = jet::readDefinition(source.pager, location, chain);
      const Bytes content = source.definition.encode();
      // The file stores the length in use.
      ASSERT_EQ(content.size(), jet::u32At(original, 8)) << file.path << narrow(object.name);
      const std::size_t needed =
          jet::TableDefinition::pagesNeeded(source.version(), content.size());
      ASSERT_LE(needed, chain.size());
      chain.resize(needed);
      const std::vector<Bytes> pages = source.definition.encodePages(chain);
      Bytes joined = pages[0];
      for (std::size_t i = 1; i < pages.size(); ++i) {
        EXPECT_EQ(jet::TableDefinition::nextPage(pages[i - 1], location), chain[i]);
        jet::appendBytes(joined,
                         jet::ByteView(pages[i]).subspan(jet::TableDefinition::kPageHeader));
      }
      const auto again = jet::TableDefinition::decode(source.version(), joined, location);
      EXPECT_EQ(again.encode(), content);
      ++definitions;
    }
  }
  EXPECT_GT(definitions, 70);
}

TEST(Properties, AreReadAsTheyWereEncoded) {
  for (const Version version : kVersions) {
    jet::PropertyBlock object{.type = jet::PropertyBlock::kObject, .name = u"", .properties = {}};
    object.properties.push_back({u"Description", 10, false, Bytes{'a', 0}});
    jet::PropertyBlock column{
        .type = jet::PropertyBlock::kColumn, .name = u"price", .properties = {}};
    column.properties.push_back({u"Required", 1, true, Bytes{1}});
    column.properties.push_back({u"Description", 10, false, {}});
    const auto read =
        jet::decodeProperties(version, jet::encodeProperties(version, {object, column}), {});
    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[1].name, u"price");
    EXPECT_TRUE(read[1].flag(u"required"));
    EXPECT_FALSE(read[1].flag(u"AllowZeroLength"));
    EXPECT_EQ(read[0].properties.at(0).data, (Bytes{'a', 0}));
  }
}

}  // namespace
