#include "platform/jet/engine/RowBuilder.h"

#include <algorithm>

#include "platform/jet/format/StoredValue.h"
#include "platform/runtime/Conversion.h"

namespace jet {
namespace {

constexpr std::size_t kMostJet3Columns = 255;

}  // namespace

RowParts partsOf(const TableSource& source, const Row& row) {
  const Location location = source.location(source.definitionPage);
  RowParts parts;
  parts.hasVariable = source.hasVariableSlots();
  parts.variable.resize(source.definition.variableSlots);
  parts.columnCount = source.definition.maxColumns;
  const ByteView area = row.content().fixedArea();
  parts.fixedArea.assign(area.begin(), area.end());
  for (const ColumnDefinition& column : source.definition.columns) {
    parts.columnCount = std::max(parts.columnCount, column.number.value() + std::size_t{1});
    if (column.fixed && column.type != ColumnType::Boolean)
      parts.fixedArea.resize(
          std::max(parts.fixedArea.size(), column.fixedOffset + fixedSize(column)));
    if (!column.fixed && column.type != ColumnType::Boolean &&
        column.variableSlot.value() >= parts.variable.size())
      raiseDamaged(location, u"column '" + column.name + u"' has the variable slot " +
                                 runtime::toText(column.variableSlot.value()) +
                                 u", but the rows have " + runtime::toText(parts.variable.size()));
  }
  if (source.version() == Version::Jet3 &&
      std::max(parts.columnCount, parts.variable.size()) > kMostJet3Columns)
    raiseUnsupported(location, u"the table has too many columns");
  parts.hasValue.resize(parts.columnCount);
  for (std::size_t i = 0; i < source.definition.columns.size(); ++i) {
    const ColumnDefinition& column = source.definition.columns[i];
    parts.hasValue[column.number.value()] = row.content().hasValue(column.number);
    if (column.fixed || column.type == ColumnType::Boolean) continue;
    const std::optional<ByteView> stored = row.stored(ColumnIndex(i));
    if (stored)
      parts.variable[column.variableSlot.value()].assign(stored->begin(), stored->end());
    else
      parts.hasValue[column.number.value()] = false;
  }
  return parts;
}

void setStored(RowParts& parts, const ColumnDefinition& column,
               const std::optional<Bytes>& stored) {
  parts.hasValue[column.number.value()] = stored.has_value();
  if (!column.fixed)
    parts.variable[column.variableSlot.value()] = stored.value_or(Bytes());
  else if (stored)
    putBytes(parts.fixedArea, column.fixedOffset, *stored);
}

void setBoolean(RowParts& parts, const ColumnDefinition& column, bool value) {
  parts.hasValue[column.number.value()] = value;
}

}  // namespace jet
