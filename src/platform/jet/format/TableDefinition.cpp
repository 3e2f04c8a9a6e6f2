#include "platform/jet/format/TableDefinition.h"

#include <algorithm>
#include <array>

#include "platform/jet/format/StoredText.h"

namespace jet {
namespace {

constexpr ColumnNumber kNoColumn{0xFFFF};
constexpr std::uint32_t kMark = 0x659;
constexpr std::uint32_t kIndexMark = 0x783;
// Offsets in a page of a definition, and in the content that the pages make up.
constexpr std::size_t kNextPage = 4;  ///< u32
constexpr std::size_t kLength = 8;    ///< u32, bytes of the content that are used

/// Offsets in the fixed part and in the entries that follow it, and the entries' sizes.
struct Fields {
  // Fixed part.
  std::size_t rowCount;        ///< u32
  std::size_t lastAutonumber;  ///< u32
  std::size_t kind;            ///< u8
  std::size_t maxColumns;      ///< u16
  std::size_t variableSlots;   ///< u16
  std::size_t columnCount;     ///< u16
  std::size_t logicalCount;    ///< u32
  std::size_t indexCount;      ///< u32
  std::size_t ownedMap;        ///< u32, row pointer
  std::size_t freeMap;         ///< u32, row pointer
  std::size_t end;
  // Counter of an index.
  std::size_t counterSize;
  // Column.
  std::size_t columnSize;
  std::size_t columnNumber;           ///< u16
  std::size_t columnVariableSlot;     ///< u16
  std::size_t columnDisplayPosition;  ///< u16, again the number
  std::size_t columnLanguage;         ///< u16, texts
  std::size_t columnFlags;            ///< u8
  std::size_t columnFixedOffset;      ///< u16
  std::size_t columnLength;           ///< u16
  // Index, after the mark.
  std::size_t indexSize;
  std::size_t indexFlags;  ///< u8
  // Logical index.
  std::size_t logicalSize;
  std::size_t entryMarkSize;  ///< bytes of the mark that indexes and logical indexes begin with
  // Name.
  std::size_t nameSize;  ///< bytes of a name's length
};

constexpr Fields kJet3Fields{.rowCount = 12,
                             .lastAutonumber = 16,
                             .kind = 20,
                             .maxColumns = 21,
                             .variableSlots = 23,
                             .columnCount = 25,
                             .logicalCount = 27,
                             .indexCount = 31,
                             .ownedMap = 35,
                             .freeMap = 39,
                             .end = 43,
                             .counterSize = 8,
                             .columnSize = 18,
                             .columnNumber = 1,
                             .columnVariableSlot = 3,
                             .columnDisplayPosition = 5,
                             .columnLanguage = 9,
                             .columnFlags = 13,
                             .columnFixedOffset = 14,
                             .columnLength = 16,
                             .indexSize = 39,
                             .indexFlags = 38,
                             .logicalSize = 20,
                             .entryMarkSize = 0,
                             .nameSize = 1};

constexpr Fields kJet4Fields{.rowCount = 16,
                             .lastAutonumber = 20,
                             .kind = 40,
                             .maxColumns = 41,
                             .variableSlots = 43,
                             .columnCount = 45,
                             .logicalCount = 47,
                             .indexCount = 51,
                             .ownedMap = 55,
                             .freeMap = 59,
                             .end = 63,
                             .counterSize = 12,
                             .columnSize = 25,
                             .columnNumber = 5,
                             .columnVariableSlot = 7,
                             .columnDisplayPosition = 9,
                             .columnLanguage = 11,
                             .columnFlags = 15,
                             .columnFixedOffset = 21,
                             .columnLength = 23,
                             .indexSize = 52,
                             .indexFlags = 42,
                             .logicalSize = 28,
                             .entryMarkSize = 4,
                             .nameSize = 2};

constexpr std::size_t kJet3LettersAt = 2;  ///< where Jet 4 has the free bytes
constexpr std::array<std::uint8_t, 2> kJet3Letters{'V', 'C'};
constexpr std::size_t kJet4Mark = 12;  ///< u32, kMark
constexpr std::size_t kJet4Step = 24;  ///< u32, step of the autonumber: kStep
constexpr std::uint32_t kStep = 1;

constexpr std::size_t kEntryMark = 0;     ///< u32, in Jet 4: kIndexMark, kMark for a logical index
constexpr std::size_t kEntryCounter = 4;  ///< u32, in the counter of an index

// Column.
constexpr std::size_t kColumnType = 0;           ///< u8
constexpr std::size_t kJet4ColumnMark = 1;       ///< u32, kMark
constexpr std::size_t kColumnPrecision = 11;     ///< u8, Numeric
constexpr std::size_t kColumnScale = 12;         ///< u8, Numeric
constexpr std::size_t kJet3ColumnCodePage = 11;  ///< u16, texts
constexpr std::size_t kJet4SortVersion = 14;     ///< u8, texts
constexpr std::size_t kJet4ExtendedFlags = 16;   ///< u8

// Index, after its mark: ten key columns, each a number and an order.
constexpr std::size_t kKeyColumnSize = 3;
constexpr std::size_t kKeyColumnNumber = 0;  ///< u16, kNoColumn where there is none
constexpr std::size_t kKeyColumnOrder = 2;   ///< u8, kAscending
constexpr std::uint8_t kAscending = 0x01;
constexpr std::size_t kIndexMap = 30;   ///< u32, row pointer
constexpr std::size_t kIndexRoot = 34;  ///< u32, page number

// Logical index, after its mark.
constexpr std::size_t kLogicalNumber = 0;           ///< u32
constexpr std::size_t kLogicalIndex = 4;            ///< u32
constexpr std::size_t kLogicalSide = 8;             ///< u8
constexpr std::size_t kLogicalOtherIndex = 9;       ///< u32
constexpr std::size_t kLogicalOtherTable = 13;      ///< u32
constexpr std::size_t kLogicalCascadeUpdates = 17;  ///< u8
constexpr std::size_t kLogicalCascadeDeletes = 18;  ///< u8
constexpr std::size_t kLogicalKind = 19;            ///< u8

// Usage maps of a long value column.
constexpr std::size_t kLongValueColumn = 0;  ///< u16
constexpr std::size_t kLongValueOwned = 2;   ///< u32, row pointer
constexpr std::size_t kLongValueFree = 6;    ///< u32, row pointer
constexpr std::size_t kLongValueSize = 10;

const Fields& fieldsOf(Version version) {
  return version == Version::Jet3 ? kJet3Fields : kJet4Fields;
}

/// Reads a definition's content; counts and lengths in it are checked against its size.
class Content {
 public:
  Content(ByteView bytes, const Location& location) : bytes_(bytes), location_(location) {}

  ByteView take(std::size_t size) {
    if (size > bytes_.size() - at_)
      raiseDamaged(location_, u"the table's definition is cut short",
                   {.offset = at_, .size = size, .available = bytes_.size()});
    at_ += size;
    return bytes_.subspan(at_ - size, size);
  }
  /// Raises damage unless `count` entries of that size remain.
  void expect(std::size_t count, std::size_t size) const {
    if (count > (bytes_.size() - at_) / size)
      raiseDamaged(location_, u"the table's definition claims more than it holds",
                   {.offset = at_, .size = count * size, .available = bytes_.size()});
  }
  bool has(std::size_t size) const { return size <= bytes_.size() - at_; }
  std::u16string takeName(Version version) {
    const ByteView size = take(fieldsOf(version).nameSize);
    return decodePlainText(version, take(version == Version::Jet3 ? size[0] : u16At(size, 0)));
  }

 private:
  ByteView bytes_;
  Location location_;
  std::size_t at_ = 0;
};

ColumnDefinition decodeColumn(Version version, ByteView entry) {
  const bool jet3 = version == Version::Jet3;
  const Fields& fields = fieldsOf(version);
  ColumnDefinition column;
  column.type = static_cast<ColumnType>(entry[kColumnType]);
  column.number = ColumnNumber(u16At(entry, fields.columnNumber));
  column.variableSlot = VariableSlot(u16At(entry, fields.columnVariableSlot));
  column.flags = entry[fields.columnFlags];
  column.extendedFlags = jet3 ? 0 : entry[kJet4ExtendedFlags];
  column.fixedOffset = u16At(entry, fields.columnFixedOffset);
  column.length = u16At(entry, fields.columnLength);
  column.fixed = (column.flags & ColumnFlag::kFixed) != 0;
  column.autonumber = (column.flags & ColumnFlag::kAutonumber) != 0;
  column.compressed = (column.extendedFlags & ColumnFlag::kExtendedCompressed) != 0;
  if (column.type == ColumnType::Numeric) {
    column.precision = entry[kColumnPrecision];
    column.scale = entry[kColumnScale];
  } else {
    column.sortLanguage = u16At(entry, fields.columnLanguage);
    column.sortVersion = jet3 ? 0 : entry[kJet4SortVersion];
    column.codePage = jet3 ? u16At(entry, kJet3ColumnCodePage) : 0;
  }
  return column;
}

IndexDefinition decodeIndex(const Fields& fields, ByteView entry) {
  const ByteView body = entry.subspan(fields.entryMarkSize);
  IndexDefinition index;
  for (std::size_t i = 0; i < IndexDefinition::kMostColumns; ++i) {
    const ByteView column = body.subspan(kKeyColumnSize * i, kKeyColumnSize);
    const ColumnNumber number(u16At(column, kKeyColumnNumber));
    if (number != kNoColumn)
      index.columns.push_back(
          {.number = number, .ascending = (column[kKeyColumnOrder] & kAscending) != 0});
  }
  index.map = rowPointerAt(body, kIndexMap);
  index.root = PageNumber(u32At(body, kIndexRoot));
  index.flags = body[fields.indexFlags];
  return index;
}

LogicalIndex decodeLogical(const Fields& fields, ByteView entry) {
  const ByteView body = entry.subspan(fields.entryMarkSize);
  LogicalIndex logical;
  logical.number = LogicalIndexNumber(u32At(body, kLogicalNumber));
  logical.index = IndexNumber(u32At(body, kLogicalIndex));
  logical.side = body[kLogicalSide];
  logical.otherIndex = LogicalIndexNumber(u32At(body, kLogicalOtherIndex));
  logical.otherTable = PageNumber(u32At(body, kLogicalOtherTable));
  logical.cascadeUpdates = body[kLogicalCascadeUpdates];
  logical.cascadeDeletes = body[kLogicalCascadeDeletes];
  logical.kind = static_cast<LogicalIndex::Kind>(body[kLogicalKind]);
  return logical;
}

/// A name follows its size in bytes.
void appendName(Version version, Bytes& content, std::u16string_view name) {
  const Bytes stored = encodePlainText(version, name);
  Bytes size(fieldsOf(version).nameSize);
  if (version == Version::Jet3)
    size[0] = static_cast<std::uint8_t>(stored.size());
  else
    putU16(size, 0, stored.size());
  appendBytes(content, size);
  appendBytes(content, stored);
}

void appendColumn(Version version, Bytes& content, const ColumnDefinition& column) {
  const bool jet3 = version == Version::Jet3;
  const Fields& fields = fieldsOf(version);
  Bytes entry(fields.columnSize);
  entry[kColumnType] = static_cast<std::uint8_t>(column.type);
  if (!jet3) putU32(entry, kJet4ColumnMark, kMark);
  putU16(entry, fields.columnNumber, column.number.value());
  putU16(entry, fields.columnVariableSlot, column.variableSlot.value());
  putU16(entry, fields.columnDisplayPosition, column.number.value());
  if (column.type == ColumnType::Numeric) {
    entry[kColumnPrecision] = column.precision;
    entry[kColumnScale] = column.scale;
  } else {
    putU16(entry, fields.columnLanguage, column.sortLanguage);
    if (jet3) putU16(entry, kJet3ColumnCodePage, column.codePage);
    if (!jet3) entry[kJet4SortVersion] = column.sortVersion;
  }
  entry[fields.columnFlags] =
      static_cast<std::uint8_t>(column.flags | (column.fixed ? ColumnFlag::kFixed : 0) |
                                (column.autonumber ? ColumnFlag::kAutonumber : 0));
  if (!jet3)
    entry[kJet4ExtendedFlags] = static_cast<std::uint8_t>(
        column.extendedFlags | (column.compressed ? ColumnFlag::kExtendedCompressed : 0));
  putU16(entry, fields.columnFixedOffset, column.fixedOffset);
  putU16(entry, fields.columnLength, column.length);
  appendBytes(content, entry);
}

void appendIndex(const Fields& fields, Bytes& content, const IndexDefinition& index) {
  Bytes entry(fields.indexSize);
  if (fields.entryMarkSize != 0) putU32(entry, kEntryMark, kIndexMark);
  const ByteSpan body = ByteSpan(entry).subspan(fields.entryMarkSize);
  for (std::size_t i = 0; i < IndexDefinition::kMostColumns; ++i) {
    const bool used = i < index.columns.size();
    const ByteSpan column = body.subspan(kKeyColumnSize * i, kKeyColumnSize);
    putU16(column, kKeyColumnNumber, (used ? index.columns[i].number : kNoColumn).value());
    column[kKeyColumnOrder] = used && index.columns[i].ascending ? kAscending : 0;
  }
  putRowPointer(body, kIndexMap, index.map);
  putU32(body, kIndexRoot, index.root.value());
  body[fields.indexFlags] = index.flags;
  appendBytes(content, entry);
}

void appendLogical(const Fields& fields, Bytes& content, const LogicalIndex& logical) {
  Bytes entry(fields.logicalSize);
  if (fields.entryMarkSize != 0) putU32(entry, kEntryMark, kMark);
  const ByteSpan body = ByteSpan(entry).subspan(fields.entryMarkSize);
  putU32(body, kLogicalNumber, logical.number.value());
  putU32(body, kLogicalIndex, logical.index.value());
  body[kLogicalSide] = logical.side;
  putU32(body, kLogicalOtherIndex, logical.otherIndex.value());
  putU32(body, kLogicalOtherTable, logical.otherTable.value());
  body[kLogicalCascadeUpdates] = logical.cascadeUpdates;
  body[kLogicalCascadeDeletes] = logical.cascadeDeletes;
  body[kLogicalKind] = static_cast<std::uint8_t>(logical.kind);
  appendBytes(content, entry);
}

}  // namespace

PageNumber TableDefinition::nextPage(ByteView page, const Location& location) {
  if (page[PageHead::kType] != static_cast<std::uint8_t>(PageType::TableDefinition))
    raiseDamaged(location, u"it is no page of a table's definition");
  return PageNumber(u32At(page, kNextPage));
}

TableDefinition TableDefinition::decode(Version version, ByteView bytes, const Location& location) {
  const Fields& fields = fieldsOf(version);
  Content content(bytes, location);
  const ByteView head = content.take(fields.end);
  TableDefinition table;
  table.version = version;
  table.rowCount = u32At(head, fields.rowCount);
  table.lastAutonumber = u32At(head, fields.lastAutonumber);
  table.kind = head[fields.kind];
  table.maxColumns = u16At(head, fields.maxColumns);
  table.variableSlots = u16At(head, fields.variableSlots);
  table.ownedPages = rowPointerAt(head, fields.ownedMap);
  table.freePages = rowPointerAt(head, fields.freeMap);
  const std::size_t columnCount = u16At(head, fields.columnCount);
  const std::size_t logicalCount = u32At(head, fields.logicalCount);
  const std::size_t indexCount = u32At(head, fields.indexCount);

  content.expect(indexCount, fields.counterSize);
  std::vector<std::uint32_t> counters;
  for (std::size_t i = 0; i < indexCount; ++i)
    counters.push_back(u32At(content.take(fields.counterSize), kEntryCounter));
  content.expect(columnCount, fields.columnSize);
  table.columns.reserve(columnCount);
  for (std::size_t i = 0; i < columnCount; ++i)
    table.columns.push_back(decodeColumn(version, content.take(fields.columnSize)));
  for (ColumnDefinition& column : table.columns) column.name = content.takeName(version);
  content.expect(indexCount, fields.indexSize);
  for (std::size_t i = 0; i < indexCount; ++i) {
    table.indexes.push_back(decodeIndex(fields, content.take(fields.indexSize)));
    table.indexes.back().entryCounter = counters[i];
  }
  content.expect(logicalCount, fields.logicalSize);
  for (std::size_t i = 0; i < logicalCount; ++i)
    table.logicalIndexes.push_back(decodeLogical(fields, content.take(fields.logicalSize)));
  for (LogicalIndex& logical : table.logicalIndexes) logical.name = content.takeName(version);
  while (content.has(kLongValueSize)) {
    const ByteView entry = content.take(kLongValueSize);
    const ColumnNumber column(u16At(entry, kLongValueColumn));
    if (column == kNoColumn) break;
    table.longValueMaps.push_back({.column = column,
                                   .owned = rowPointerAt(entry, kLongValueOwned),
                                   .free = rowPointerAt(entry, kLongValueFree)});
  }
  return table;
}

Bytes TableDefinition::encode() const {
  const Fields& fields = fieldsOf(version);
  Bytes content(fields.end);
  content[PageHead::kType] = static_cast<std::uint8_t>(PageType::TableDefinition);
  content[PageHead::kMark] = PageHead::kLive;
  if (version == Version::Jet3) putBytes(content, kJet3LettersAt, kJet3Letters);
  if (version == Version::Jet4) {
    putU32(content, kJet4Mark, kMark);
    putU32(content, kJet4Step, kStep);
  }
  putU32(content, fields.rowCount, rowCount);
  putU32(content, fields.lastAutonumber, lastAutonumber);
  content[fields.kind] = kind;
  putU16(content, fields.maxColumns, maxColumns);
  putU16(content, fields.variableSlots, variableSlots);
  putU16(content, fields.columnCount, columns.size());
  putU32(content, fields.logicalCount, static_cast<std::uint32_t>(logicalIndexes.size()));
  putU32(content, fields.indexCount, static_cast<std::uint32_t>(indexes.size()));
  putRowPointer(content, fields.ownedMap, ownedPages);
  putRowPointer(content, fields.freeMap, freePages);

  for (const IndexDefinition& index : indexes) {
    Bytes counter(fields.counterSize);
    putU32(counter, kEntryCounter, index.entryCounter);
    appendBytes(content, counter);
  }
  for (const ColumnDefinition& column : columns) appendColumn(version, content, column);
  for (const ColumnDefinition& column : columns) appendName(version, content, column.name);
  for (const IndexDefinition& index : indexes) appendIndex(fields, content, index);
  for (const LogicalIndex& logical : logicalIndexes) appendLogical(fields, content, logical);
  for (const LogicalIndex& logical : logicalIndexes) appendName(version, content, logical.name);
  for (const LongValueMaps& maps : longValueMaps) {
    Bytes entry(kLongValueSize);
    putU16(entry, kLongValueColumn, maps.column.value());
    putRowPointer(entry, kLongValueOwned, maps.owned);
    putRowPointer(entry, kLongValueFree, maps.free);
    appendBytes(content, entry);
  }
  appendU16(content, kNoColumn.value());
  putU32(content, kLength, static_cast<std::uint32_t>(content.size()));
  return content;
}

std::size_t TableDefinition::pagesNeeded(Version version, std::size_t contentSize) {
  const std::size_t pageSize = layoutOf(version).pageSize;
  if (contentSize <= pageSize) return 1;
  const std::size_t more = pageSize - kPageHeader;
  return 1 + (contentSize - pageSize + more - 1) / more;
}

std::vector<Bytes> TableDefinition::encodePages(std::span<const PageNumber> pages) const {
  const std::size_t pageSize = layoutOf(version).pageSize;
  const Bytes content = encode();
  std::vector<Bytes> result;
  std::size_t at = 0;
  for (std::size_t i = 0; i < pages.size(); ++i) {
    Bytes page(pageSize);
    const std::size_t front = i == 0 ? 0 : kPageHeader;
    const std::size_t part = std::min(pageSize - front, content.size() - at);
    if (i > 0) putBytes(page, 0, ByteView(content).first(kPageHeader));
    putBytes(page, front, ByteView(content).subspan(at, part));
    at += part;
    const std::size_t left = pageSize - front - part;
    if (version == Version::Jet4)
      putU16(page, PageHead::kFreeBytes, left < kPageHeader ? 0 : left - kPageHeader);
    putU32(page, kNextPage, (i + 1 < pages.size() ? pages[i + 1] : kNoPage).value());
    result.push_back(std::move(page));
  }
  return result;
}

std::size_t TableDefinition::entryCounterAt(Version version, IndexNumber index) {
  const Fields& fields = fieldsOf(version);
  return fields.end + index.value() * fields.counterSize + kEntryCounter;
}

}  // namespace jet
