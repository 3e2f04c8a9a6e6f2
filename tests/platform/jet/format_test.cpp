#include <gtest/gtest.h>

#include <algorithm>
#include <concepts>
#include <random>
#include <type_traits>

#include "platform/jet/engine/RowReader.h"
#include "platform/jet/format/DataPage.h"
#include "platform/jet/format/IndexPage.h"
#include "platform/jet/format/PageCipher.h"
#include "platform/jet/format/RowContent.h"
#include "platform/jet/format/StoredText.h"

namespace {

using jet::Bytes;
using jet::Version;

constexpr Version kVersions[] = {Version::Jet3, Version::Jet4};

// Swapped arguments must not compile.
template <class A, class B>
constexpr bool kUnrelated = !std::is_convertible_v<A, B> && !std::is_convertible_v<B, A> &&
                            !std::is_constructible_v<A, B> && !std::is_constructible_v<B, A> &&
                            !std::equality_comparable_with<A, B>;
template <class... Numbers>
constexpr bool kConvertsOnlyExplicitly = ((!std::is_convertible_v<int, Numbers> &&
                                           !std::is_convertible_v<Numbers, int> &&
                                           !std::is_constructible_v<int, Numbers>)&&...);
static_assert(kConvertsOnlyExplicitly<jet::PageNumber, jet::SlotNumber, jet::ColumnNumber,
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

TEST(Row, DecodesAsEncodedWithAnyLengthAndPadding) {
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
      const bool isPadded = parts.hasVariable && random() % 2 == 0;
      const std::size_t wanted = isPadded ? shortest + random() % 300 : shortest;
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

}  // namespace
