#include "storesql/PrintedValue.h"

#include <array>
#include <charconv>
#include <cmath>
#include <utility>
#include <variant>

#include "platform/runtime/CodePage.h"

namespace storesql {
namespace {

constexpr std::array<std::pair<char16_t, char16_t>, 4> kEscapes{
    {{u'\\', u'\\'}, {u'\t', u't'}, {u'\r', u'r'}, {u'\n', u'n'}}};

/// The shortest decimal that reads back as the same number, with at least one digit after the
/// point; very large and very small numbers have an exponent.
template <class Number>
std::string shortest(Number number) {
  constexpr Number kLarge = 1e16F;
  constexpr Number kSmall = 1e-4F;
  const Number magnitude = std::fabs(number);
  const bool isPlain = magnitude == 0 || (magnitude >= kSmall && magnitude < kLarge);
  std::array<char, 64> digits{};
  const auto end =
      std::to_chars(digits.data(), digits.data() + digits.size(), number,
                    isPlain ? std::chars_format::fixed : std::chars_format::scientific);
  std::string text(digits.data(), end.ptr);
  if (isPlain && text.find('.') == std::string::npos) text += ".0";
  return text;
}

struct Printer {
  std::string operator()(runtime::Null) const { return "\\N"; }
  std::string operator()(bool value) const { return value ? "1" : "0"; }
  std::string operator()(std::uint8_t value) const { return std::to_string(value); }
  std::string operator()(std::int16_t value) const { return std::to_string(value); }
  std::string operator()(std::int32_t value) const { return std::to_string(value); }
  std::string operator()(float value) const { return shortest(value); }
  std::string operator()(double value) const { return shortest(value); }
  std::string operator()(const std::u16string& value) const { return escaped(value); }

  std::string operator()(runtime::Currency value) const {
    constexpr std::uint64_t kScale = 10'000;
    const auto amount = static_cast<std::uint64_t>(value.tenThousandths);
    const std::uint64_t magnitude = value.tenThousandths < 0 ? 0 - amount : amount;
    const std::string decimals = std::to_string(kScale + magnitude % kScale);
    return (value.tenThousandths < 0 ? "-" : "") + std::to_string(magnitude / kScale) + "." +
           decimals.substr(1);
  }

  std::string operator()(const runtime::Binary& value) const {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t byte : value) {
      text += kDigits[byte >> 4U];
      text += kDigits[byte & 0x0FU];
    }
    return text;
  }

  std::string operator()(runtime::Date value) const { return plain(value); }
  std::string operator()(const runtime::Guid& value) const { return plain(value); }
  std::string operator()(const runtime::Decimal& value) const { return plain(value); }

 private:
  static std::string plain(const runtime::Variant& value) {
    return runtime::toUtf8(value.toText());
  }
};

}  // namespace

std::string printed(const runtime::Variant& value) {
  return std::visit(Printer{}, value.get());
}

std::string escaped(std::u16string_view text) {
  std::u16string result;
  for (const char16_t c : text) {
    const auto* escape = kEscapes.begin();
    while (escape != kEscapes.end() && escape->first != c) ++escape;
    if (escape != kEscapes.end()) result += u'\\';
    result += escape != kEscapes.end() ? escape->second : c;
  }
  return runtime::toUtf8(result);
}

runtime::Variant unescaped(std::string_view field) {
  if (field == "\\N") return {};
  const std::u16string text = runtime::fromUtf8(field);
  std::u16string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    result += text[i];
    if (text[i] != u'\\' || i + 1 == text.size()) continue;
    for (const auto& [plain, escape] : kEscapes) {
      if (text[i + 1] != escape) continue;
      result.back() = plain;
      ++i;
      break;
    }
  }
  return result;
}

}  // namespace storesql
