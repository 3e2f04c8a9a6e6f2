#include "platform/runtime/Text.h"

#include <locale.h>

#include <algorithm>
#include <cwctype>

#include "platform/runtime/RunTimeError.h"

namespace runtime {
namespace {

std::size_t checkedLength(std::u16string_view text, std::ptrdiff_t length) {
  if (length < 0) throw RunTimeError(ErrorNumber::InvalidProcedureCall);
  return std::min(text.size(), static_cast<std::size_t>(length));
}

/// The C library's case mapping for letters of all scripts, independent of the user's locale.
locale_t unicodeLetters() {
  static const locale_t letters = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  if (letters == nullptr) throw RunTimeError(ErrorNumber::InternalError);
  return letters;
}

using LetterMap = std::wint_t (*)(std::wint_t, locale_t);

char16_t mapped(char16_t unit, LetterMap map) {
  const std::wint_t letter = map(unit, unicodeLetters());
  return letter <= 0xFFFF ? static_cast<char16_t>(letter) : unit;
}

template <char16_t (*map)(char16_t)>
std::u16string mapped(std::u16string_view text) {
  std::u16string result(text);
  std::ranges::transform(result, result.begin(), map);
  return result;
}

}  // namespace

std::u16string left(std::u16string_view text, std::ptrdiff_t length) {
  return std::u16string(text.substr(0, checkedLength(text, length)));
}

std::u16string right(std::u16string_view text, std::ptrdiff_t length) {
  return std::u16string(text.substr(text.size() - checkedLength(text, length)));
}

std::u16string trim(std::u16string_view text) {
  const std::size_t first = text.find_first_not_of(u' ');
  if (first == text.npos) return {};
  return std::u16string(text.substr(first, text.find_last_not_of(u' ') - first + 1));
}

std::u16string spaces(std::size_t count) {
  return std::u16string(count, u' ');
}

char16_t upperCase(char16_t unit) {
  if (unit < 0x80) return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 0x20) : unit;
  return mapped(unit, towupper_l);
}

char16_t lowerCase(char16_t unit) {
  if (unit < 0x80) return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 0x20) : unit;
  return mapped(unit, towlower_l);
}

std::u16string foldCase(std::u16string_view text) {
  return mapped<upperCase>(text);
}

std::u16string lowerCase(std::u16string_view text) {
  return mapped<lowerCase>(text);
}

std::optional<int> digitValue(char16_t unit, int base) {
  int value = -1;
  if (isDigit(unit)) value = unit - u'0';
  if (unit >= u'A' && unit <= u'F') value = unit - u'A' + 10;
  if (unit >= u'a' && unit <= u'f') value = unit - u'a' + 10;
  if (value < 0 || value >= base) return std::nullopt;
  return value;
}

std::u16string widened(std::string_view ascii) {
  return {ascii.begin(), ascii.end()};
}

std::u16string hexDigits(unsigned number, std::size_t count) {
  std::u16string digits(count, u'0');
  for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit, number >>= 4U)
    *digit = u"0123456789ABCDEF"[number & 0xFU];
  return digits;
}

}  // namespace runtime
