#include "platform/jetsql/ResultRow.h"

#include <cmath>
#include <cstring>
#include <limits>

#include "platform/jetsql/Error.h"

namespace jetsql {
namespace {

using runtime::Variant;

double asNumber(const RawValue& value) {
  if (const auto* whole = std::get_if<std::int64_t>(&value)) return static_cast<double>(*whole);
  if (const auto* number = std::get_if<double>(&value)) return *number;
  throw error::typeMismatch();
}

template <class Whole>
Variant wholeValue(const RawValue& value) {
  const double rounded = std::nearbyint(asNumber(value));
  if (!(rounded >= std::numeric_limits<Whole>::min()) ||
      !(rounded <= std::numeric_limits<Whole>::max())) {
    throw error::overflow();
  }
  return static_cast<Whole>(rounded);
}

Variant guidValue(std::span<const std::uint8_t> bytes) {
  runtime::Guid guid;
  if (bytes.size() == guid.bytes.size()) {
    std::memcpy(guid.bytes.data(), bytes.data(), bytes.size());
  }
  return guid;
}

/// A value whose type only the row tells.
Variant untypedValue(const RawValue& value) {
  if (const auto* whole = std::get_if<std::int64_t>(&value)) {
    const bool fits = *whole >= std::numeric_limits<std::int32_t>::min() &&
                      *whole <= std::numeric_limits<std::int32_t>::max();
    return fits ? Variant(static_cast<std::int32_t>(*whole)) : Variant(static_cast<double>(*whole));
  }
  if (const auto* number = std::get_if<double>(&value)) return *number;
  if (const auto* text = std::get_if<std::u16string_view>(&value)) return std::u16string(*text);
  const auto bytes = std::get<std::span<const std::uint8_t>>(value);
  return runtime::Binary(bytes.begin(), bytes.end());
}

struct ToRaw {
  RawValue operator()(runtime::Null) const { return std::monostate{}; }
  RawValue operator()(bool value) const { return std::int64_t{value ? -1 : 0}; }
  RawValue operator()(std::uint8_t value) const { return std::int64_t{value}; }
  RawValue operator()(std::int16_t value) const { return std::int64_t{value}; }
  RawValue operator()(std::int32_t value) const { return std::int64_t{value}; }
  RawValue operator()(runtime::Currency value) const { return value.tenThousandths; }
  RawValue operator()(float value) const { return double{value}; }
  RawValue operator()(double value) const { return value; }
  RawValue operator()(runtime::Date value) const { return value.days; }
  RawValue operator()(const std::u16string& value) const { return std::u16string_view(value); }
  RawValue operator()(const runtime::Binary& value) const {
    return std::span<const std::uint8_t>(value);
  }
  RawValue operator()(const runtime::Guid& value) const {
    return std::span<const std::uint8_t>(value.bytes);
  }
  RawValue operator()(const runtime::Decimal& value) const {
    return std::u16string_view(value.digits);
  }
};

}  // namespace

RawValue rawValue(const Variant& value) {
  return std::visit(ToRaw{}, value.get());
}

Variant typedValue(Type type, const RawValue& value) {
  if (std::holds_alternative<std::monostate>(value)) return {};
  const bool isText = std::holds_alternative<std::u16string_view>(value);
  const auto* bytes = std::get_if<std::span<const std::uint8_t>>(&value);
  switch (type) {
    case Type::Boolean:
      return asNumber(value) != 0;
    case Type::Byte:
      return wholeValue<std::uint8_t>(value);
    case Type::Integer:
      return wholeValue<std::int16_t>(value);
    case Type::Long:
      return wholeValue<std::int32_t>(value);
    case Type::Currency:
      if (const auto* amount = std::get_if<std::int64_t>(&value)) {
        return runtime::Currency{*amount};
      }
      throw error::typeMismatch();
    case Type::Single:
      return static_cast<float>(asNumber(value));
    case Type::Double:
      return asNumber(value);
    case Type::Date:
      return runtime::Date{asNumber(value)};
    case Type::Decimal:
      if (isText) return runtime::Decimal{std::u16string(std::get<std::u16string_view>(value))};
      return asNumber(value);
    case Type::Guid:
      return bytes != nullptr ? guidValue(*bytes) : untypedValue(value);
    case Type::Text:
    case Type::Memo:
      // Latin letters come as one byte each.
      if (bytes != nullptr) return std::u16string(bytes->begin(), bytes->end());
      break;
    case Type::Null:
    case Type::Binary:
    case Type::Any:
      break;
  }
  return untypedValue(value);
}

}  // namespace jetsql
