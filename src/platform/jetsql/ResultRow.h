#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/jet/engine/TableIdentity.h"
#include "platform/jetsql/Type.h"
#include "platform/runtime/Variant.h"

namespace jetsql {

/// A column of a result.
struct ResultColumn {
  std::u16string name;  ///< as the statement or the file spells it
  Type type = Type::Null;
  /// The table and the column of it that the values come from unchanged, and which of the result's
  /// source rows holds it; without a table the column can't be written.
  std::optional<jet::TableIdentity> table;
  jet::ColumnIdentity tableColumn;
  int sourceRow = 0;
};

/// A value as it leaves the engine: null, a whole number, a floating one, text or bytes. Text and
/// bytes live until the next row.
using RawValue = std::variant<std::monostate, std::int64_t, double, std::u16string_view,
                              std::span<const std::uint8_t>>;

/// The value as a column of the type gives it. Raises the overflow error for a calculated number
/// that its type doesn't hold.
runtime::Variant typedValue(Type type, const RawValue& value);

/// The same value before it was typed; a text or bytes stay with `value`.
RawValue rawValue(const runtime::Variant& value);

/// One row of a result.
struct ResultRow {
  std::span<const RawValue> values;
  /// Packed ids of the table rows behind it; 0 where an outer join found none.
  std::span<const std::uint32_t> sources;
};

/// Takes the rows of a result.
class RowSink {
 public:
  virtual ~RowSink() = default;
  /// Called once, before any row.
  virtual void columns(std::vector<ResultColumn> columns) = 0;
  virtual void row(const ResultRow& row) = 0;
};

}  // namespace jetsql
