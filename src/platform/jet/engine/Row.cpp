#include "platform/jet/engine/Row.h"

#include <bit>

#include "platform/jet/engine/LongValues.h"
#include "platform/jet/engine/TableSource.h"
#include "platform/jet/format/StoredText.h"
#include "platform/jet/format/StoredValue.h"
#include "platform/jet/format/TextKey.h"

namespace jet {
Row::Row(const TableSource& source, RowId id, const FoundRow& found)
    : source_(&source),
      id_(id),
      content_(source.version(), found.bytes, source.hasVariableSlots(),
               source.location(found.body.page)) {}

inline std::optional<ByteView> Row::stored(const ColumnDefinition& definition) const {
  if (definition.type == ColumnType::Boolean || !content_.hasValue(definition.number))
    return std::nullopt;
  if (!definition.fixed) return content_.variable(definition.variableSlot);
  return content_.fixed(definition);
}

std::optional<ByteView> Row::stored(ColumnIndex column) const {
  return stored(source_->column(column));
}

bool Row::isNull(ColumnIndex column) const {
  return source_->column(column).type != ColumnType::Boolean && !stored(column);
}

runtime::Variant Row::value(ColumnIndex column) const {
  const ColumnDefinition& definition = source_->column(column);
  if (definition.type == ColumnType::Boolean) return content_.hasValue(definition.number);
  const std::optional<ByteView> bytes = stored(definition);
  if (!bytes) return runtime::Null{};
  if (!isLongValue(definition.type))
    return decodeValue(source_->version(), definition, *bytes, location());
  return decodeValue(source_->version(), definition, readLongValue(*source_, *bytes, location()),
                     location());
}

template <class Use>
bool Row::withText(ColumnIndex column, Use use) const {
  const ColumnDefinition& definition = source_->column(column);
  const std::optional<ByteView> bytes = stored(definition);
  if (!bytes) return false;
  if (isLongValue(definition.type))
    use(ByteView(readLongValue(*source_, *bytes, location())));
  else
    use(*bytes);
  return true;
}

bool Row::text(ColumnIndex column, std::u16string& out) const {
  return withText(column, [&](ByteView bytes) { decodeText(source_->version(), bytes, out); });
}

std::optional<ByteView> Row::latinText(ColumnIndex column) const {
  const Version version = source_->version();
  const ColumnDefinition& definition = source_->column(column);
  if (version == Version::Jet3 || definition.type != ColumnType::Text) return std::nullopt;
  const std::optional<ByteView> bytes = stored(definition);
  if (!bytes || !isByteText(version, *bytes)) return std::nullopt;
  return byteText(version, *bytes);
}

bool Row::sortKey(ColumnIndex column, std::string& key) const {
  const Version version = source_->version();
  const TextOrder order = textOrderOf(version);
  return withText(column, [&](ByteView bytes) {
    if (isByteText(version, bytes)) {
      appendByteTextKey(order, byteText(version, bytes), key);
    } else {
      std::u16string text;
      decodeText(version, bytes, text);
      appendTextKey(order, text, key);
    }
  });
}

bool Row::integer(ColumnIndex column, std::int32_t& out) const {
  const ColumnDefinition& definition = source_->column(column);
  if (definition.type == ColumnType::Boolean) {
    out = content_.hasValue(definition.number) ? -1 : 0;
    return true;
  }
  const std::optional<ByteView> bytes = stored(definition);
  if (!bytes) return false;
  requireSize(definition.type, *bytes, location());
  if (definition.type == ColumnType::Byte)
    out = (*bytes)[0];
  else if (definition.type == ColumnType::Integer)
    out = std::bit_cast<std::int16_t>(u16At(*bytes, 0));
  else
    out = std::bit_cast<std::int32_t>(u32At(*bytes, 0));
  return true;
}

}  // namespace jet
