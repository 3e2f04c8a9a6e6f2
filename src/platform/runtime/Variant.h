#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace runtime {

/// The absence of a value.
struct Null {
  bool operator==(const Null&) const = default;
};
/// A Currency amount in ten-thousandths.
struct Currency {
  /// Ten-thousandths in one.
  static constexpr std::int64_t kOne = 10'000;

  std::int64_t tenThousandths = 0;

  /// The amount as a floating point number, which keeps some 15 digits.
  double toDouble() const { return static_cast<double>(tenThousandths) / kOne; }
  bool operator==(const Currency&) const = default;
};
/// A date: days since 1899-12-30; the fraction is the time of day.
struct Date {
  static constexpr std::int64_t kSecondsADay = 86'400;
  static constexpr std::int64_t kFirstDay = -657'434;  ///< 0100-01-01
  static constexpr std::int64_t kLastDay = 2'958'465;  ///< 9999-12-31
  static constexpr int kDaysTo1970 = 25'569;

  double days = 0;

  /// False outside the years 100 to 9999.
  bool isInCalendar() const { return days > kFirstDay - 1 && days < kLastDay + 1; }
  bool operator==(const Date&) const = default;
};
/// A globally unique identifier.
struct Guid {
  std::array<std::uint8_t, 16> bytes{};  ///< in printed order
  bool operator==(const Guid&) const = default;
};
/// A scaled decimal (type 16 of the store's columns), as its plain decimal text.
struct Decimal {
  std::u16string digits;
  bool operator==(const Decimal&) const = default;
};
/// Uninterpreted bytes.
using Binary = std::vector<std::uint8_t>;

/// The value of a database field, read or to be written.
class Variant {
 public:
  using Alternatives = std::variant<Null, bool, std::uint8_t, std::int16_t, std::int32_t, Currency,
                                    float, double, Date, std::u16string, Binary, Guid, Decimal>;

  Variant() = default;
  template <class T>
  requires std::is_constructible_v<Alternatives, T> Variant(T value) : value_(std::move(value)) {}
  Variant(std::u16string_view text) : value_(std::u16string(text)) {}
  Variant(const char16_t* text) : value_(std::u16string(text)) {}

  bool isNull() const { return std::holds_alternative<Null>(value_); }
  const Alternatives& get() const { return value_; }

  /// The value as text: integers in plain decimal, a double with up to 15 significant digits
  /// (a single with 7), Currency with up to 4 decimals, "True" and "False", a date as "YYYY-MM-DD
  /// hh:mm:ss", a GUID in braces and capitals. A null raises InvalidUseOfNull, bytes raise
  /// TypeMismatch.
  std::u16string toText() const;
  /// The value as a 32-bit integer, a fraction rounded half to even, True as -1; null raises
  /// InvalidUseOfNull, a text that is no number TypeMismatch (as do bytes and a GUID), a value
  /// beyond the range Overflow.
  std::int32_t toLong() const;
  /// The value as a number where its type is numeric: True as -1, an amount, a date as its days.
  /// nullopt for null, texts, bytes, GUIDs and scaled decimals.
  std::optional<double> number() const;
  bool operator==(const Variant&) const = default;

 private:
  Alternatives value_;
};

/// Concatenates the value's text and another text; a null counts as the empty text.
std::u16string operator&(const Variant& value, std::u16string_view text);

}  // namespace runtime
