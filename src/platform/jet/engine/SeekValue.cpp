#include "platform/jet/engine/SeekValue.h"

#include <cmath>
#include <limits>
#include <optional>
#include <variant>

namespace jet {
namespace {

using runtime::Variant;
using Outcome = SeekValue::Outcome;

SeekValue noRow() {
  return {Outcome::NoRow, {}};
}
SeekValue unusable() {
  return {};
}
SeekValue usable(Variant value) {
  return {Outcome::Value, std::move(value)};
}

template <class T>
SeekValue integerBound(Comparison comparison, double bound) {
  const double rounded = comparison == Comparison::AtLeast  ? std::ceil(bound)
                         : comparison == Comparison::AtMost ? std::floor(bound)
                                                            : bound;
  if (rounded != std::floor(rounded)) return noRow();
  if (rounded > std::numeric_limits<T>::max())
    return comparison == Comparison::AtMost ? unusable() : noRow();
  if (rounded < std::numeric_limits<T>::min())
    return comparison == Comparison::AtLeast ? unusable() : noRow();
  return usable(static_cast<T>(rounded));
}

/// An amount is compared as a double: the neighbours of a bound are included.
SeekValue currency(Comparison comparison, const Variant& value, double bound) {
  if (const auto* exact = std::get_if<runtime::Currency>(&value.get())) return usable(*exact);
  constexpr double kSafe = 9e18;
  const double units = bound * runtime::Currency::kOne;
  if (std::abs(units) > kSafe) return unusable();
  const double near = std::round(units);
  if (comparison == Comparison::Equal && std::abs(units - near) > 0.01) return noRow();
  const double slack = comparison == Comparison::AtLeast  ? -1
                       : comparison == Comparison::AtMost ? 1
                                                          : 0;
  return usable(runtime::Currency{static_cast<std::int64_t>(near + slack)});
}

SeekValue single(Comparison comparison, double bound) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  if (std::abs(bound) > std::numeric_limits<float>::max()) return unusable();
  const auto near = static_cast<float>(bound);
  if (static_cast<double>(near) == bound) return usable(near);
  if (comparison == Comparison::Equal) return noRow();
  return usable(std::nextafter(near, comparison == Comparison::AtLeast ? -kInfinity : kInfinity));
}

SeekValue boolean(Comparison comparison, double bound) {
  if (comparison != Comparison::Equal) return unusable();
  return bound == 0 ? usable(false) : bound == -1 ? usable(true) : noRow();
}

template <class T>
SeekValue sameKind(const Variant& bound) {
  return std::holds_alternative<T>(bound.get()) ? usable(bound) : unusable();
}

SeekValue textValue(const Variant& bound) {
  // A text, or a text's key.
  const bool text = std::holds_alternative<std::u16string>(bound.get()) ||
                    std::holds_alternative<runtime::Binary>(bound.get());
  return text ? usable(bound) : unusable();
}

}  // namespace

SeekValue seekValue(const ColumnDefinition& column, Comparison comparison, const Variant& bound) {
  if (isText(column.type)) return textValue(bound);
  if (column.type == ColumnType::Binary) return sameKind<runtime::Binary>(bound);
  if (column.type == ColumnType::Guid) return sameKind<runtime::Guid>(bound);
  const std::optional<double> number = bound.number();
  if (!number || std::isnan(*number)) return unusable();
  switch (column.type) {
    case ColumnType::Boolean:
      return boolean(comparison, *number);
    case ColumnType::Byte:
      return integerBound<std::uint8_t>(comparison, *number);
    case ColumnType::Integer:
      return integerBound<std::int16_t>(comparison, *number);
    case ColumnType::Long:
      return integerBound<std::int32_t>(comparison, *number);
    case ColumnType::Currency:
      return currency(comparison, bound, *number);
    case ColumnType::Single:
      return single(comparison, *number);
    // Adding 0 turns a negative zero, which would have a key of its own, into zero.
    case ColumnType::Double:
      return usable(*number + 0.0);
    case ColumnType::DateTime:
      return usable(runtime::Date{*number + 0.0});
    case ColumnType::Binary:
    case ColumnType::Text:
    case ColumnType::Ole:
    case ColumnType::Memo:
    case ColumnType::Guid:
    case ColumnType::Numeric:
    case ColumnType::Block:
      break;
  }
  return unusable();
}

}  // namespace jet
