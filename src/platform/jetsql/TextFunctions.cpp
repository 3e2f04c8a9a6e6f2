#include <algorithm>
#include <string>

#include "platform/jetsql/DateText.h"
#include "platform/jetsql/Error.h"
#include "platform/jetsql/Like.h"
#include "platform/jetsql/SqlFunction.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/Text.h"
#include "platform/runtime/Variant.h"

namespace jetsql {
namespace {

/// Longest text that a function makes, in units.
constexpr std::size_t kLongestText = 1 << 20;

void concat(const FunctionCall& call) {
  // Null counts as the empty text here, and only here.
  std::u16string whole;
  for (int i = 0; i < call.count(); ++i) whole += call.text(i);
  call.giveText(whole);
}

std::size_t length(const FunctionCall& call, int argument) {
  const std::int32_t count = call.whole(argument);
  if (count < 0) throw error::invalidCall();
  return static_cast<std::size_t>(count);
}

void len(const FunctionCall& call) {
  if (call.hasNull()) return;
  call.giveWhole(static_cast<std::int64_t>(call.text(0).size()));
}

void left(const FunctionCall& call) {
  if (call.hasNull()) return;
  call.giveText(call.text(0).substr(0, length(call, 1)));
}

void right(const FunctionCall& call) {
  if (call.hasNull()) return;
  const std::u16string text = call.text(0);
  call.giveText(text.substr(text.size() - std::min(text.size(), length(call, 1))));
}

void mid(const FunctionCall& call) {
  if (call.hasNull()) return;
  const std::u16string text = call.text(0);
  const std::size_t start = length(call, 1);
  if (start == 0) throw error::invalidCall();
  const std::size_t count = call.count() > 2 ? length(call, 2) : text.size();
  call.giveText(start > text.size() ? std::u16string() : text.substr(start - 1, count));
}

/// Texts are found without regard to letter case, as they compare.
void instr(const FunctionCall& call) {
  if (call.hasNull()) return;
  const std::size_t start = length(call, 0);
  if (start == 0) throw error::invalidCall();
  const auto folded = [](std::u16string text) {
    std::ranges::transform(text, text.begin(), foldedCase);
    return text;
  };
  const std::u16string text = folded(call.text(1));
  const std::u16string sought = folded(call.text(2));
  call.spend(text.size() * std::max<std::size_t>(sought.size(), 1) / 8);
  const std::size_t found =
      start > text.size() ? std::u16string::npos : text.find(sought, start - 1);
  call.giveWhole(found == std::u16string::npos ? 0 : static_cast<std::int64_t>(found) + 1);
}

template <char16_t (*convert)(char16_t)>
void letters(const FunctionCall& call) {
  if (call.hasNull()) return;
  std::u16string text = call.text(0);
  std::ranges::transform(text, text.begin(), convert);
  call.giveText(text);
}

enum class Ends : std::uint8_t { Left = 1, Right = 2, Both = 3 };

template <Ends ends>
void trim(const FunctionCall& call) {
  if (call.hasNull()) return;
  const std::u16string text = call.text(0);
  std::size_t begin = 0;
  std::size_t end = text.size();
  while (ends != Ends::Right && begin < end && text[begin] == u' ') ++begin;
  while (ends != Ends::Left && end > begin && text[end - 1] == u' ') --end;
  call.giveText(std::u16string_view(text).substr(begin, end - begin));
}

std::u16string repeated(std::size_t count, char16_t character) {
  if (count > kLongestText) throw error::engine(u"Out of string space.");
  return std::u16string(count, character);
}

void space(const FunctionCall& call) {
  if (call.hasNull()) return;
  call.giveText(repeated(length(call, 0), u' '));
}

char16_t characterOf(std::int32_t code) {
  if (code < 0 || code > 255) throw error::invalidCall();
  const char byte = static_cast<char>(static_cast<unsigned char>(code));
  return runtime::fromCodePage({&byte, 1})[0];
}

void string(const FunctionCall& call) {
  if (call.hasNull()) return;
  const std::u16string text = call.isText(1) ? call.text(1) : std::u16string();
  if (call.isText(1) && text.empty()) throw error::invalidCall();
  const char16_t character = call.isText(1) ? text[0] : characterOf(call.whole(1) % 256);
  call.giveText(repeated(length(call, 0), character));
}

void strcomp(const FunctionCall& call) {
  if (call.hasNull()) return;
  constexpr std::int32_t kByUnits = 0;
  if (call.count() > 2 && call.whole(2) == kByUnits) {
    const int result = call.text(0).compare(call.text(1));
    return call.giveWhole(result < 0 ? -1 : (result > 0 ? 1 : 0));
  }
  const std::string a = jet::textKey(call.order(), call.text(0));
  const std::string b = jet::textKey(call.order(), call.text(1));
  call.giveWhole(a < b ? -1 : (a > b ? 1 : 0));
}

void asc(const FunctionCall& call) {
  if (call.hasNull()) return;
  const std::u16string text = call.text(0);
  if (text.empty()) throw error::invalidCall();
  call.giveWhole(static_cast<unsigned char>(runtime::toCodePage(text.substr(0, 1))[0]));
}

void chr(const FunctionCall& call) {
  if (call.hasNull()) return;
  call.giveText(std::u16string(1, characterOf(call.whole(0))));
}

void dateAsText(const FunctionCall& call) {
  if (call.hasNull()) return;
  call.giveText(dateText(call.number(0)));
}

void singleAsText(const FunctionCall& call) {
  if (call.hasNull()) return;
  call.giveText(runtime::Variant(static_cast<float>(call.number(0))).toText());
}

void guidAsText(const FunctionCall& call) {
  if (call.hasNull()) return;
  if (!call.isBytes(0)) return call.giveText(call.text(0));
  runtime::Guid guid;
  const std::string_view bytes = call.bytes(0);
  for (std::size_t i = 0; i < guid.bytes.size() && i < bytes.size(); ++i) {
    guid.bytes[i] = static_cast<std::uint8_t>(bytes[i]);
  }
  call.giveText(runtime::Variant(guid).toText());
}

constexpr SqlFunction kFunctions[] = {
    {"jet_concat", concat, nullptr},
    {"jet_len", len, nullptr},
    {"jet_left", left, nullptr},
    {"jet_right", right, nullptr},
    {"jet_mid", mid, nullptr},
    {"jet_instr", instr, nullptr},
    {"jet_ucase", letters<runtime::upperCase>, nullptr},
    {"jet_lcase", letters<runtime::lowerCase>, nullptr},
    {"jet_trim", trim<Ends::Both>, nullptr},
    {"jet_ltrim", trim<Ends::Left>, nullptr},
    {"jet_rtrim", trim<Ends::Right>, nullptr},
    {"jet_space", space, nullptr},
    {"jet_string", string, nullptr},
    {"jet_strcomp", strcomp, nullptr},
    {"jet_asc", asc, nullptr},
    {"jet_chr", chr, nullptr},
    {"jet_date_text", dateAsText, nullptr},
    {"jet_single_text", singleAsText, nullptr},
    {"jet_guid_text", guidAsText, nullptr},
};

}  // namespace

std::span<const SqlFunction> textFunctions() {
  return kFunctions;
}

}  // namespace jetsql
