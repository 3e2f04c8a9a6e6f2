#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/ColumnType.h"
#include "platform/jet/format/Damage.h"
#include "platform/jet/format/Layout.h"
#include "platform/jet/format/RowPointer.h"

namespace jet {

/// Bits of a column's flags.
struct ColumnFlag {
  static constexpr std::uint8_t kFixed = 0x01;      ///< stored in the fixed area
  static constexpr std::uint8_t kUpdatable = 0x02;  ///< always set
  static constexpr std::uint8_t kAutonumber = 0x04;
  static constexpr std::uint8_t kSystem = 0x10;    ///< of the engine's own tables
  static constexpr std::uint8_t kIdentity = 0x20;  ///< a user or group: an owner, a permission
  /// Of the extended flags: text is compressed where that is possible.
  static constexpr std::uint8_t kExtendedCompressed = 0x01;
};

/// A column in a table's definition.
struct ColumnDefinition {
  std::u16string name;
  ColumnType type = ColumnType::Long;
  ColumnNumber number;
  VariableSlot variableSlot;      ///< of a column outside the fixed area
  std::uint16_t fixedOffset = 0;  ///< of a column inside it
  std::uint16_t length = 0;       ///< bytes at most; 0 for memo and OLE
  bool fixed = false;             ///< stored in the fixed area
  bool autonumber = false;
  bool compressed = false;  ///< Jet 4 text is written one byte a character where that is possible
  std::uint16_t sortLanguage = 0;
  std::uint8_t sortVersion = 0;
  std::uint16_t codePage = 0;  ///< Jet 3
  std::uint8_t precision = 0;
  std::uint8_t scale = 0;
  /// All flags as they are stored; `fixed` and `autonumber` are bits of them.
  std::uint8_t flags = 0;
  std::uint8_t extendedFlags = 0;
};

/// One column of an index's key.
struct KeyColumn {
  ColumnNumber number;
  bool ascending = true;
};

/// An index that is stored in the file.
struct IndexDefinition {
  static constexpr std::uint8_t kUnique = 0x01;
  static constexpr std::uint8_t kIgnoreNulls = 0x02;
  static constexpr std::uint8_t kRequired = 0x08;
  static constexpr std::uint8_t kJet4 = 0x80;  ///< always set there
  static constexpr std::size_t kMostColumns = 10;

  std::vector<KeyColumn> columns;
  RowPointer map;  ///< usage map of its pages
  PageNumber root;
  std::uint8_t flags = 0;
  std::uint32_t entryCounter = 0;  ///< a statistic

  bool unique() const { return (flags & kUnique) != 0; }
  bool ignoresNulls() const { return (flags & kIgnoreNulls) != 0; }
  bool required() const { return (flags & kRequired) != 0; }
};

/// A named use of an index. Several logical indexes may share one stored index.
struct LogicalIndex {
  enum class Kind : std::uint8_t { Plain = 0, PrimaryKey = 1, ForeignKey = 2 };
  static constexpr LogicalIndexNumber kNone{0xFFFFFFFF};
  // Sides of a foreign key; 0 where the index is none.
  static constexpr std::uint8_t kReferenced = 1;
  static constexpr std::uint8_t kReferencing = 2;
  // Whether changes of a foreign key cascade.
  static constexpr std::uint8_t kCascades = 1;
  static constexpr std::uint8_t kNoForeignKey = 4;

  std::u16string name;
  LogicalIndexNumber number = {};
  IndexNumber index;  ///< the stored index that it uses
  Kind kind = Kind::Plain;
  std::uint8_t side = 0;
  LogicalIndexNumber otherIndex = kNone;  ///< in the other table
  PageNumber otherTable;                  ///< its definition page
  std::uint8_t cascadeUpdates = kNoForeignKey;
  std::uint8_t cascadeDeletes = kNoForeignKey;
};

/// Usage maps of the pages that hold a memo or OLE column's values.
struct LongValueMaps {
  ColumnNumber column;
  RowPointer owned;
  RowPointer free;
};

/// A table's definition, kept on one page or on several in a chain.
struct TableDefinition {
  static constexpr std::uint8_t kUserTable = 0x4E;
  static constexpr std::uint8_t kSystemTable = 0x53;
  /// Header bytes of each page after the first; the header of the first belongs to the content.
  static constexpr std::size_t kPageHeader = 8;

  Version version = Version::Jet4;
  std::uint32_t rowCount = 0;
  std::uint32_t lastAutonumber = 0;
  std::uint8_t kind = kUserTable;
  std::uint16_t maxColumns = 0;  ///< highest column number ever used + 1
  std::uint16_t variableSlots = 0;
  RowPointer ownedPages;                  ///< usage map of the table's data pages
  RowPointer freePages;                   ///< usage map of those with room
  std::vector<ColumnDefinition> columns;  ///< in the order of the definition
  std::vector<IndexDefinition> indexes;
  std::vector<LogicalIndex> logicalIndexes;
  std::vector<LongValueMaps> longValueMaps;

  /// The page on which a definition continues, 0 after the last. Raises damage where the page is no
  /// definition page.
  static PageNumber nextPage(ByteView page, const Location& location);
  /// Reads a definition from its pages, the first complete and the others without their header.
  static TableDefinition decode(Version version, ByteView content, const Location& location);
  /// The same content, without the unused rest.
  Bytes encode() const;
  /// The content split over pages; `pages` numbers them, as many as `pagesNeeded` returns.
  std::vector<Bytes> encodePages(std::span<const PageNumber> pages) const;
  static std::size_t pagesNeeded(Version version, std::size_t contentSize);

  /// Offset of an index's entry counter in the content.
  static std::size_t entryCounterAt(Version version, IndexNumber index);
};

}  // namespace jet
