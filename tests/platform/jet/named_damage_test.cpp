// One damaged file for each fault that matters, made from a sound store by overwriting a few bytes,
// with the expected error number and text. The offsets are those of docs/store-file.md.

#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "makestore/StoreBuilder.h"
#include "platform/jet/StoreFiles.h"
#include "platform/runtime/RunTimeError.h"
#include "support/ProgramFolder.h"

namespace {

using namespace jettest;
namespace fs = std::filesystem;
using runtime::Variant;

constexpr std::size_t kPageSize = 4096;
constexpr std::uint32_t kBeyondTheEnd = 0xFFFFF0;
/// The definition of the first generated table, which takes one page.
constexpr std::uint32_t kItems = 6;
constexpr std::uint32_t kObjects = 2;

constexpr std::uint8_t kData = 1;
constexpr std::uint8_t kNode = 3;
constexpr std::uint8_t kLeaf = 4;

// Offsets in a data page, an index page and a table's definition.
constexpr std::size_t kOwner = 4;
constexpr std::size_t kRowCount = 12;
constexpr std::size_t kFirstSlot = 14;
constexpr std::size_t kNext = 16;
constexpr std::size_t kTail = 20;
constexpr std::size_t kPrefix = 24;
constexpr std::size_t kMask = 27;
constexpr std::size_t kEntries = 480;
constexpr std::size_t kNextDefinition = 4;
constexpr std::size_t kColumnCount = 45;
constexpr std::size_t kLogicalIndexCount = 47;
constexpr std::size_t kIndexCount = 51;
constexpr std::size_t kOwnedMap = 55;

constexpr unsigned kDeleted = 0xC000;
constexpr unsigned kPointer = 0x4000;
constexpr unsigned kOffset = 0x1FFF;

/// The file's bytes, and the offsets of the parts of the table Items.
class Store {
 public:
  Store() : bytes_(sound()) {}

  const std::vector<std::uint8_t>& bytes() const { return bytes_; }
  std::uint8_t* page(std::uint32_t number) { return bytes_.data() + number * kPageSize; }
  std::uint32_t pageCount() const { return static_cast<std::uint32_t>(bytes_.size() / kPageSize); }

  static std::uint32_t number(const std::uint8_t* at, std::size_t size = 4) {
    std::uint32_t value = 0;
    for (std::size_t i = size; i-- > 0;) value = value << 8 | at[i];
    return value;
  }
  std::uint32_t number(std::uint32_t pageNumber, std::size_t at, std::size_t size = 4) {
    return number(page(pageNumber) + at, size);
  }
  static void put(std::uint8_t* at, std::uint32_t value, std::size_t size = 4) {
    for (std::size_t i = 0; i < size; ++i, value >>= 8) at[i] = static_cast<std::uint8_t>(value);
  }
  void put(std::uint32_t pageNumber, std::size_t at, std::uint32_t value, std::size_t size = 4) {
    put(page(pageNumber) + at, value, size);
  }

  /// The first page of a type and an owner.
  std::uint32_t find(std::uint8_t type, std::uint32_t owner) {
    for (std::uint32_t found = 2; found < pageCount(); ++found)
      if (page(found)[0] == type && number(found, kOwner) == owner) return found;
    throw std::runtime_error("no such page");
  }
  std::uint32_t rows() { return find(kData, kItems); }
  std::uint32_t leaf() { return find(kLeaf, kItems); }
  std::uint32_t node() { return find(kNode, kItems); }

  std::size_t slotAt(int slot) { return kFirstSlot + 2 * static_cast<std::size_t>(slot); }
  std::size_t rowAt(std::uint32_t pageNumber, int slot) {
    return number(pageNumber, slotAt(slot), 2) & kOffset;
  }
  std::size_t rowEnd(std::uint32_t pageNumber, int slot) {
    return slot == 0 ? kPageSize : rowAt(pageNumber, slot - 1);
  }
  void markSlot(std::uint32_t pageNumber, int slot, unsigned flags) {
    put(pageNumber, slotAt(slot), number(pageNumber, slotAt(slot), 2) | flags, 2);
  }
  /// Makes a slot point to a row elsewhere.
  void pointSlot(int slot, std::uint32_t toPage, std::uint8_t toSlot) {
    markSlot(rows(), slot, kPointer);
    put(rows(), rowAt(rows(), slot), toPage << 8 | toSlot);
  }
  std::uint8_t* rowAt(std::uint32_t pointer) {
    return page(pointer >> 8) + rowAt(pointer >> 8, static_cast<int>(pointer & 0xFF));
  }
  std::uint8_t* ownedMap() { return rowAt(number(page(kItems) + kOwnedMap)); }
  /// The head of the first row's memo, which is stored on pages of its own.
  std::uint8_t* memoHead() {
    // Fixed part, then the name, then the memo of 12 bytes.
    for (std::size_t i = rowAt(rows(), 0); i < kPageSize; ++i)
      if (number(rows(), i) == kMemoLength * 2U) return page(rows()) + i;
    throw std::runtime_error("no memo");
  }
  std::uint32_t memoPiece() { return number(memoHead() + 4); }

  static constexpr std::uint32_t kMemoLength = 5000;

 private:
  static std::vector<std::uint8_t> sound() {
    makestore::StoreBuilder store;
    makestore::StoreTable& items = store.table(u"Items");
    items.column({.name = u"id"})
        .column(makestore::Column::text(u"name", 60))
        .column({.name = u"note", .type = jet::ColumnType::Memo, .compressed = false})
        .index(makestore::Index::primaryKey(u"id"))
        .index(makestore::Index::plain(u"name"));
    for (std::int32_t id = 1; id <= 400; ++id) {
      const Variant memo = id == 1 ? Variant(std::u16string(kMemoLength, u'm')) : Variant();
      items.row({id, std::u16string(50, static_cast<char16_t>(u'a' + id % 26)), memo});
    }
    store.query(makestore::SelectQuery().allColumns().from(u"Items").named(u"qryItems"));
    return store.referenceMaps().build();
  }

  std::vector<std::uint8_t> bytes_;
};

constexpr int kEngine = -2147467259;
constexpr int kPassword = -2147217843;

struct Fault {
  const char* name;
  std::function<void(Store&)> damage;
  std::string words;  ///< part of the error's text
  int number = kEngine;
};

const std::string kOutside = "it names a page outside the file (4096 bytes at offset ";

const std::vector<Fault>& faults() {
  static const std::vector<Fault> all{
      {"header_of_another_program", [](Store& s) { s.page(0)[4] = 'X'; },
       "Unrecognized database format 'the file'."},
      {"header_of_a_later_generation", [](Store& s) { s.page(0)[0x14] = 2; },
       "Unrecognized database format 'the file'."},
      {"password_that_is_no_text", [](Store& s) { s.put(0, 0x42, 0xDBFFDBFF); },
       "Not a valid password.", kPassword},
      {"password_mask_that_is_no_date",
       [](Store& s) {
         for (std::size_t i = 0; i < 8; ++i) s.page(0)[0x72 + i] ^= 0xFF;
       },
       "Not a valid password.", kPassword},

      {"data_page_of_another_type", [](Store& s) { s.page(s.rows())[0] = 9; },
       "it is no data page"},
      {"data_page_of_another_table", [](Store& s) { s.put(s.rows(), kOwner, kObjects); },
       "it belongs to another table"},
      {"data_page_with_too_many_rows", [](Store& s) { s.put(s.rows(), kRowCount, 0xFFFF, 2); },
       "it claims more rows than it can hold"},
      {"row_beyond_its_page", [](Store& s) { s.put(s.rows(), s.slotAt(1), kOffset, 2); },
       "a row lies outside its bounds"},
      {"row_whose_null_mask_runs_out",
       [](Store& s) { s.put(s.rows(), s.rowAt(s.rows(), 0), 0xFFFF, 2); }, "a row is too short"},
      {"row_with_more_variable_columns_than_bytes",
       [](Store& s) { s.put(s.rows(), s.rowEnd(s.rows(), 0) - 3, 0xFFFF, 2); },
       "a row has more columns than bytes"},
      {"row_whose_value_ends_beyond_it",
       [](Store& s) { s.put(s.rows(), s.rowEnd(s.rows(), 0) - 7, 0xFFFF, 2); },
       "a value lies outside its row"},
      {"pointer_row_to_a_page_beyond_the_end", [](Store& s) { s.pointSlot(1, kBeyondTheEnd, 0); },
       kOutside},
      {"pointer_row_to_itself", [](Store& s) { s.pointSlot(1, s.rows(), 1); },
       "a row that moved can't be followed"},
      {"pointer_row_to_a_row_that_is_not_there", [](Store& s) { s.pointSlot(1, s.rows(), 250); },
       "a row is looked for that it doesn't have"},
      {"pointer_row_to_a_page_of_another_table",
       [](Store& s) { s.pointSlot(1, s.find(kData, kObjects), 0); }, "it belongs to another table"},

      {"long_value_larger_than_the_file", [](Store& s) { Store::put(s.memoHead(), 0x3FFFFFFF); },
       "a long value claims more than the file holds"},
      {"long_value_on_a_page_beyond_the_end",
       [](Store& s) { Store::put(s.memoHead() + 4, kBeyondTheEnd << 8); }, kOutside},
      {"long_value_on_a_page_of_rows",
       [](Store& s) { Store::put(s.memoHead() + 4, s.rows() << 8); },
       "a long value leads to a page of another kind"},
      {"long_value_whose_piece_was_deleted",
       [](Store& s) {
         s.markSlot(s.memoPiece() >> 8, static_cast<int>(s.memoPiece() & 0xFF), kDeleted);
       },
       "a piece of a long value is missing"},
      {"long_value_chain_in_a_circle",
       [](Store& s) { Store::put(s.rowAt(s.memoPiece()), s.memoPiece()); },
       "a long value leads in a circle"},

      {"usage_map_of_an_unknown_kind", [](Store& s) { *s.ownedMap() = 7; },
       "a usage map is of no known kind"},
      {"usage_map_on_a_page_beyond_the_end",
       [](Store& s) { s.put(kItems, kOwnedMap, kBeyondTheEnd << 8); }, kOutside},
      {"usage_map_whose_bitmap_is_a_page_of_rows",
       [](Store& s) { Store::put(s.ownedMap() + 1, s.rows()); }, "it is no bitmap of a usage map"},
      {"usage_map_of_pages_beyond_the_end",
       [](Store& s) { s.page(Store::number(s.ownedMap() + 1))[kPageSize - 1] = 0x80; }, kOutside},

      {"definition_on_a_page_of_another_type", [](Store& s) { s.page(kItems)[0] = kData; },
       "The database 'the file' is damaged (table 'Items', page 6): it is no page of a table's "
       "definition"},
      {"definition_chain_in_a_circle", [](Store& s) { s.put(kItems, kNextDefinition, kItems); },
       "the table's definition has no end"},
      {"definition_chain_beyond_the_end",
       [](Store& s) { s.put(kItems, kNextDefinition, kBeyondTheEnd); }, kOutside},
      {"definition_with_too_many_columns", [](Store& s) { s.put(kItems, kColumnCount, 0xFFFF, 2); },
       "the table's definition"},
      {"definition_with_too_many_indexes", [](Store& s) { s.put(kItems, kIndexCount, 0xFFFFFF); },
       "the table's definition"},
      {"definition_with_too_many_index_names",
       [](Store& s) { s.put(kItems, kLogicalIndexCount, 0xFFFFFF); }, "the table's definition"},

      {"index_page_of_another_type", [](Store& s) { s.page(s.leaf())[0] = kData; },
       "it is no page of an index"},
      {"index_page_of_another_table", [](Store& s) { s.put(s.leaf(), kOwner, kObjects); },
       "it belongs to another table's index"},
      {"node_without_a_child",
       [](Store& s) {
         for (std::size_t i = kMask; i < kEntries; ++i) s.page(s.node())[i] = 0;
         s.put(s.node(), kTail, 0);
       },
       kOutside},
      {"node_whose_child_is_itself",
       [](Store& s) {
         const std::uint32_t node = s.node();
         for (std::size_t i = kMask; i < kEntries; ++i) s.page(node)[i] = 0;
         s.put(node, kTail, node);
       },
       "an index has no leaves"},
      {"leaf_whose_next_is_itself", [](Store& s) { s.put(s.leaf(), kNext, s.leaf()); },
       "the leaves of an index lead in a circle"},
      {"leaf_whose_next_is_a_node", [](Store& s) { s.put(s.leaf(), kNext, s.node()); },
       "it is no leaf of an index"},
      {"leaf_whose_entry_names_a_page_beyond_the_end",
       [](Store& s) {
         // Keys of the primary key are 5 bytes; the row's page follows, high byte first.
         for (std::size_t i = 5; i < 8; ++i) s.page(s.leaf())[kEntries + i] = 0xFF;
       },
       kOutside},
      {"leaf_with_an_entry_of_one_byte", [](Store& s) { s.page(s.leaf())[kMask] |= 0x02; },
       "an index entry is too short"},
      {"leaf_with_an_entry_beyond_its_end",
       [](Store& s) { s.page(s.leaf())[kEntries - 1] |= 0x80; },
       "an index entry ends after the page"},
      {"leaf_that_leaves_out_more_than_its_entries_have",
       [](Store& s) { s.put(s.leaf(), kPrefix, 4000, 2); },
       "an index page leaves out more than its entries have"},
  };
  return all;
}

TEST(NamedDamage, EachFaultHasItsErrorNumberAndText) {
  const Scratch scratch;
  const fs::path sound = scratch.folder() / "sound.mdb";
  support::writeFile(sound, Store().bytes());
  EXPECT_NO_THROW(readEverything(sound, u""));
  std::vector<fs::path> files{sound};
  for (const Fault& fault : faults()) {
    SCOPED_TRACE(fault.name);
    Store store;
    fault.damage(store);
    files.push_back(scratch.folder() / fault.name);
    support::writeFile(files.back(), store.bytes());
    try {
      readEverything(files.back(), u"");
      ADD_FAILURE() << "no error";
    } catch (const runtime::RunTimeError& error) {
      EXPECT_EQ(error.number(), fault.number);
      EXPECT_NE(narrow(error.text()).find(fault.words), std::string::npos) << error.what();
    }
  }
  auto verdicts = checkerLines("", files);
  const std::vector<std::string> isSound{"sound"};
  EXPECT_EQ(verdicts[sound], isSound);
  for (const Fault& fault : faults()) {
    // The checker needs no password.
    EXPECT_EQ(verdicts[scratch.folder() / fault.name] == isSound, fault.number == kPassword)
        << fault.name;
  }
}

}  // namespace
