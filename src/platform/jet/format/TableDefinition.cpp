#include "platform/jet/format/TableDefinition.h"

#include <algorithm>

#include "platform/runtime/CodePage.h"

namespace jet {
namespace {

constexpr std::uint8_t kFlagFixed = 0x01;
constexpr std::uint8_t kFlagAutonumber = 0x04;
constexpr std::uint8_t kExtendedCompressed = 0x01;
constexpr std::uint16_t kNoColumn = 0xFFFF;
constexpr std::uint32_t kMark = 0x659;
constexpr std::uint32_t kIndexMark = 0x783;
constexpr std::size_t kNextPageAt = 4;
constexpr std::size_t kLengthAt = 8;

/// Offsets of a definition's fixed part and the sizes of its entries.
struct Fields {
  std::size_t rowCount, lastAutonumber, kind, maxColumns, variableSlots, columnCount, logicalCount,
      indexCount, ownedMap, freeMap, end;
  std::size_t counterSize, columnSize, indexSize, logicalSize;
  std::size_t entryMark;  ///< bytes of the constant in front of each Jet 4 entry
};

constexpr Fields kJet3Fields{12, 16, 20, 21, 23, 25, 27, 31, 35, 39, 43, 8, 18, 39, 20, 0};
constexpr Fields kJet4Fields{16, 20, 40, 41, 43, 45, 47, 51, 55, 59, 63, 12, 25, 52, 28, 4};

const Fields& fieldsOf(Version version) {
  return version == Version::Jet3 ? kJet3Fields : kJet4Fields;
}

/// Goes through a definition's content; what the content claims is checked against its size.
class Content {
 public:
  Content(ByteView bytes, const Place& place) : bytes_(bytes), place_(place) {}

  ByteView take(std::size_t size) {
    if (size > bytes_.size() - at_) raiseDamaged(place_, u"the table's definition is cut short");
    at_ += size;
    return bytes_.subspan(at_ - size, size);
  }
  /// Raises damage unless `count` entries of that size are still to come.
  void expect(std::size_t count, std::size_t size) const {
    if (count > (bytes_.size() - at_) / size)
      raiseDamaged(place_, u"the table's definition claims more than it holds");
  }
  bool has(std::size_t size) const { return size <= bytes_.size() - at_; }
  std::u16string takeName(Version version) {
    if (version == Version::Jet3) {
      const ByteView name = take(take(1)[0]);
      return runtime::fromCodePage({reinterpret_cast<const char*>(name.data()), name.size()});
    }
    const ByteView name = take(u16At(take(2), 0));
    std::u16string text;
    for (std::size_t i = 0; i + 1 < name.size(); i += 2)
      text.push_back(static_cast<char16_t>(u16At(name, i)));
    return text;
  }

 private:
  ByteView bytes_;
  Place place_;
  std::size_t at_ = 0;
};

ColumnDefinition decodeColumn(Version version, ByteView entry) {
  const bool jet3 = version == Version::Jet3;
  ColumnDefinition column;
  column.type = static_cast<ColumnType>(entry[0]);
  column.number = u16At(entry, jet3 ? 1 : 5);
  column.variableSlot = u16At(entry, jet3 ? 3 : 7);
  column.flags = entry[jet3 ? 13 : 15];
  column.extendedFlags = jet3 ? 0 : entry[16];
  column.fixedOffset = u16At(entry, jet3 ? 14 : 21);
  column.length = u16At(entry, jet3 ? 16 : 23);
  column.fixed = (column.flags & kFlagFixed) != 0;
  column.autonumber = (column.flags & kFlagAutonumber) != 0;
  column.compressed = (column.extendedFlags & kExtendedCompressed) != 0;
  if (column.type == ColumnType::Numeric) {
    column.precision = entry[11];
    column.scale = entry[12];
  } else {
    column.sortLanguage = u16At(entry, jet3 ? 9 : 11);
    column.sortVersion = jet3 ? 0 : entry[14];
    column.codePage = jet3 ? u16At(entry, 11) : 0;
  }
  return column;
}

IndexDefinition decodeIndex(const Fields& fields, ByteView entry) {
  const ByteView body = entry.subspan(fields.entryMark);
  IndexDefinition index;
  for (std::size_t i = 0; i < IndexDefinition::kMostColumns; ++i) {
    const std::uint16_t number = u16At(body, 3 * i);
    if (number != kNoColumn)
      index.columns.push_back({.number = number, .ascending = (body[3 * i + 2] & 1) != 0});
  }
  index.map = RowPointer::unpack(u32At(body, 30));
  index.root = u32At(body, 34);
  index.flags = fields.entryMark == 0 ? body[38] : body[42];
  return index;
}

LogicalIndex decodeLogical(const Fields& fields, ByteView entry) {
  const ByteView body = entry.subspan(fields.entryMark);
  LogicalIndex logical;
  logical.number = u32At(body, 0);
  logical.index = u32At(body, 4);
  logical.side = body[8];
  logical.otherIndex = u32At(body, 9);
  logical.otherTable = u32At(body, 13);
  logical.cascadeUpdates = body[17];
  logical.cascadeDeletes = body[18];
  logical.kind = static_cast<LogicalIndex::Kind>(body[19]);
  return logical;
}

void appendName(Version version, Bytes& content, std::u16string_view name) {
  if (version == Version::Jet3) {
    const std::string bytes = runtime::toCodePage(name);
    content.push_back(static_cast<std::uint8_t>(bytes.size()));
    content.insert(content.end(), bytes.begin(), bytes.end());
    return;
  }
  appendU16(content, 2 * name.size());
  for (const char16_t unit : name) appendU16(content, unit);
}

void appendColumn(Version version, Bytes& content, const ColumnDefinition& column) {
  const bool jet3 = version == Version::Jet3;
  Bytes entry(fieldsOf(version).columnSize);
  entry[0] = static_cast<std::uint8_t>(column.type);
  if (!jet3) putU32(entry, 1, kMark);
  putU16(entry, jet3 ? 1 : 5, column.number);
  putU16(entry, jet3 ? 3 : 7, column.variableSlot);
  putU16(entry, jet3 ? 5 : 9, column.number);
  if (column.type == ColumnType::Numeric) {
    entry[11] = column.precision;
    entry[12] = column.scale;
  } else {
    putU16(entry, jet3 ? 9 : 11, column.sortLanguage);
    if (jet3) putU16(entry, 11, column.codePage);
    if (!jet3) entry[14] = column.sortVersion;
  }
  entry[jet3 ? 13 : 15] = static_cast<std::uint8_t>(column.flags | (column.fixed ? kFlagFixed : 0) |
                                                    (column.autonumber ? kFlagAutonumber : 0));
  if (!jet3)
    entry[16] = static_cast<std::uint8_t>(column.extendedFlags |
                                          (column.compressed ? kExtendedCompressed : 0));
  putU16(entry, jet3 ? 14 : 21, column.fixedOffset);
  putU16(entry, jet3 ? 16 : 23, column.length);
  appendBytes(content, entry);
}

void appendIndex(const Fields& fields, Bytes& content, const IndexDefinition& index) {
  Bytes entry(fields.indexSize);
  if (fields.entryMark != 0) putU32(entry, 0, kIndexMark);
  const ByteSpan body = ByteSpan(entry).subspan(fields.entryMark);
  for (std::size_t i = 0; i < IndexDefinition::kMostColumns; ++i) {
    const bool used = i < index.columns.size();
    putU16(body, 3 * i, used ? index.columns[i].number : kNoColumn);
    body[3 * i + 2] = used && index.columns[i].ascending ? 1 : 0;
  }
  putU32(body, 30, index.map.pack());
  putU32(body, 34, index.root);
  body[fields.entryMark == 0 ? 38 : 42] = index.flags;
  appendBytes(content, entry);
}

void appendLogical(const Fields& fields, Bytes& content, const LogicalIndex& logical) {
  Bytes entry(fields.logicalSize);
  if (fields.entryMark != 0) putU32(entry, 0, kMark);
  const ByteSpan body = ByteSpan(entry).subspan(fields.entryMark);
  putU32(body, 0, logical.number);
  putU32(body, 4, logical.index);
  body[8] = logical.side;
  putU32(body, 9, logical.otherIndex);
  putU32(body, 13, logical.otherTable);
  body[17] = logical.cascadeUpdates;
  body[18] = logical.cascadeDeletes;
  body[19] = static_cast<std::uint8_t>(logical.kind);
  appendBytes(content, entry);
}

}  // namespace

std::uint32_t TableDefinition::nextPage(ByteView page, const Place& place) {
  if (page[0] != static_cast<std::uint8_t>(PageType::TableDefinition))
    raiseDamaged(place, u"it is no page of a table's definition");
  return u32At(page, kNextPageAt);
}

TableDefinition TableDefinition::decode(Version version, ByteView bytes, const Place& place) {
  const Fields& fields = fieldsOf(version);
  Content content(bytes, place);
  const ByteView head = content.take(fields.end);
  TableDefinition table;
  table.version = version;
  table.rowCount = u32At(head, fields.rowCount);
  table.lastAutonumber = u32At(head, fields.lastAutonumber);
  table.kind = head[fields.kind];
  table.maxColumns = u16At(head, fields.maxColumns);
  table.variableSlots = u16At(head, fields.variableSlots);
  table.ownedPages = RowPointer::unpack(u32At(head, fields.ownedMap));
  table.freePages = RowPointer::unpack(u32At(head, fields.freeMap));
  const std::size_t columnCount = u16At(head, fields.columnCount);
  const std::size_t logicalCount = u32At(head, fields.logicalCount);
  const std::size_t indexCount = u32At(head, fields.indexCount);

  content.expect(indexCount, fields.counterSize);
  std::vector<std::uint32_t> counters;
  for (std::size_t i = 0; i < indexCount; ++i)
    counters.push_back(u32At(content.take(fields.counterSize), 4));
  content.expect(columnCount, fields.columnSize);
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
  while (content.has(10)) {
    const ByteView entry = content.take(10);
    if (u16At(entry, 0) == kNoColumn) break;
    table.longValueMaps.push_back({.column = u16At(entry, 0),
                                   .owned = RowPointer::unpack(u32At(entry, 2)),
                                   .free = RowPointer::unpack(u32At(entry, 6))});
  }
  return table;
}

Bytes TableDefinition::encode() const {
  const Fields& fields = fieldsOf(version);
  Bytes content(fields.end);
  content[0] = static_cast<std::uint8_t>(PageType::TableDefinition);
  content[1] = 1;
  if (version == Version::Jet3) putBytes(content, 2, Bytes{'V', 'C'});
  if (version == Version::Jet4) {
    putU32(content, 12, kMark);
    putU32(content, 24, 1);
  }
  putU32(content, fields.rowCount, rowCount);
  putU32(content, fields.lastAutonumber, lastAutonumber);
  content[fields.kind] = kind;
  putU16(content, fields.maxColumns, maxColumns);
  putU16(content, fields.variableSlots, variableSlots);
  putU16(content, fields.columnCount, columns.size());
  putU32(content, fields.logicalCount, static_cast<std::uint32_t>(logicalIndexes.size()));
  putU32(content, fields.indexCount, static_cast<std::uint32_t>(indexes.size()));
  putU32(content, fields.ownedMap, ownedPages.pack());
  putU32(content, fields.freeMap, freePages.pack());

  for (const IndexDefinition& index : indexes) {
    Bytes counter(fields.counterSize);
    putU32(counter, 4, index.entryCounter);
    appendBytes(content, counter);
  }
  for (const ColumnDefinition& column : columns) appendColumn(version, content, column);
  for (const ColumnDefinition& column : columns) appendName(version, content, column.name);
  for (const IndexDefinition& index : indexes) appendIndex(fields, content, index);
  for (const LogicalIndex& logical : logicalIndexes) appendLogical(fields, content, logical);
  for (const LogicalIndex& logical : logicalIndexes) appendName(version, content, logical.name);
  for (const LongValueMaps& maps : longValueMaps) {
    appendU16(content, maps.column);
    appendU32(content, maps.owned.pack());
    appendU32(content, maps.free.pack());
  }
  appendU16(content, kNoColumn);
  putU32(content, kLengthAt, static_cast<std::uint32_t>(content.size()));
  return content;
}

std::size_t TableDefinition::pagesNeeded(Version version, std::size_t contentSize) {
  const std::size_t pageSize = layoutOf(version).pageSize;
  if (contentSize <= pageSize) return 1;
  const std::size_t more = pageSize - kPageHeader;
  return 1 + (contentSize - pageSize + more - 1) / more;
}

std::vector<Bytes> TableDefinition::encodePages(std::span<const std::uint32_t> pages) const {
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
    if (version == Version::Jet4) putU16(page, 2, left < kPageHeader ? 0 : left - kPageHeader);
    putU32(page, kNextPageAt, i + 1 < pages.size() ? pages[i + 1] : 0);
    result.push_back(std::move(page));
  }
  return result;
}

std::size_t TableDefinition::entryCounterAt(Version version, std::size_t index) {
  const Fields& fields = fieldsOf(version);
  return fields.end + index * fields.counterSize + 4;
}

}  // namespace jet
