#include "platform/jetsql/functions/TextFunctions.h"

#include <algorithm>
#include <memory>
#include <string>

#include "platform/jetsql/functions/FunctionCall.h"
#include "platform/jetsql/functions/Like.h"
#include "platform/jetsql/syntax/DateText.h"
#include "platform/jetsql/syntax/StatementError.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/Text.h"
#include "platform/runtime/Variant.h"

namespace jetsql {
namespace {

/// Longest text that a function creates, in 16-bit units.
constexpr std::size_t kLongestText = 1 << 20;

void concat(const FunctionCall& call) {
  // Null counts as the empty text here, and only here.
  std::u16string joined;
  for (int i = 0; i < call.count(); ++i) joined += call.text(i);
  call.setText(joined);
}

std::size_t length(const FunctionCall& call, int argument) {
  const std::int32_t count = call.integer(argument);
  if (count < 0) throw error::invalidCall();
  return static_cast<std::size_t>(count);
}

void len(const FunctionCall& call) {
  call.setInteger(static_cast<std::int64_t>(call.text(0).size()));
}

void left(const FunctionCall& call) {
  call.setText(call.text(0).substr(0, length(call, 1)));
}

void right(const FunctionCall& call) {
  const std::u16string text = call.text(0);
  call.setText(text.substr(text.size() - std::min(text.size(), length(call, 1))));
}

void mid(const FunctionCall& call) {
  const std::u16string text = call.text(0);
  const std::size_t start = length(call, 1);
  if (start == 0) throw error::invalidCall();
  const std::size_t count = call.count() > 2 ? length(call, 2) : text.size();
  call.setText(start > text.size() ? std::u16string() : text.substr(start - 1, count));
}

/// The search ignores letter case, as comparisons do.
void instr(const FunctionCall& call) {
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
  call.setInteger(found == std::u16string::npos ? 0 : static_cast<std::int64_t>(found) + 1);
}

template <char16_t (*convert)(char16_t)>
void letters(const FunctionCall& call) {
  std::u16string text = call.text(0);
  std::ranges::transform(text, text.begin(), convert);
  call.setText(text);
}

enum class Ends : std::uint8_t { Left = 1, Right = 2, Both = 3 };

template <Ends ends>
void trim(const FunctionCall& call) {
  const std::u16string text = call.text(0);
  std::size_t begin = 0;
  std::size_t end = text.size();
  while (ends != Ends::Right && begin < end && text[begin] == u' ') ++begin;
  while (ends != Ends::Left && end > begin && text[end - 1] == u' ') --end;
  call.setText(std::u16string_view(text).substr(begin, end - begin));
}

std::u16string repeated(std::size_t count, char16_t character) {
  if (count > kLongestText) throw error::textTooLong();
  return std::u16string(count, character);
}

void space(const FunctionCall& call) {
  call.setText(repeated(length(call, 0), u' '));
}

char16_t characterOf(std::int32_t code) {
  if (code < 0 || code > 255) throw error::invalidCall();
  const char byte = static_cast<char>(static_cast<unsigned char>(code));
  return runtime::fromCodePage({&byte, 1})[0];
}

void string(const FunctionCall& call) {
  const std::u16string text = call.isText(1) ? call.text(1) : std::u16string();
  if (call.isText(1) && text.empty()) throw error::invalidCall();
  const char16_t character = call.isText(1) ? text[0] : characterOf(call.integer(1) % 256);
  call.setText(repeated(length(call, 0), character));
}

void strcomp(const FunctionCall& call) {
  constexpr std::int32_t kByUnits = 0;
  if (call.count() > 2 && call.integer(2) == kByUnits) {
    const int result = call.text(0).compare(call.text(1));
    return call.setInteger(result < 0 ? -1 : (result > 0 ? 1 : 0));
  }
  const std::string a = jet::textKey(call.order(), call.text(0));
  const std::string b = jet::textKey(call.order(), call.text(1));
  call.setInteger(a < b ? -1 : (a > b ? 1 : 0));
}

void asc(const FunctionCall& call) {
  const std::u16string text = call.text(0);
  if (text.empty()) throw error::invalidCall();
  call.setInteger(static_cast<unsigned char>(runtime::toCodePage(text.substr(0, 1))[0]));
}

void chr(const FunctionCall& call) {
  call.setText(std::u16string(1, characterOf(call.integer(0))));
}

void dateAsText(const FunctionCall& call) {
  call.setText(dateText(call.number(0)));
}

void singleAsText(const FunctionCall& call) {
  call.setText(runtime::Variant(static_cast<float>(call.number(0))).toText());
}

void guidAsText(const FunctionCall& call) {
  if (!call.isBytes(0)) return call.setText(call.text(0));
  runtime::Guid guid;
  const std::string_view bytes = call.bytes(0);
  for (std::size_t i = 0; i < guid.bytes.size() && i < bytes.size(); ++i) {
    guid.bytes[i] = static_cast<std::uint8_t>(bytes[i]);
  }
  call.setText(runtime::Variant(guid).toText());
}

void setMatch(const FunctionCall& call, const LikePattern& pattern) {
  const std::u16string text = call.text(0);
  call.spend(text.size() * pattern.size());
  call.setInteger(pattern.matches(text) ? 1 : 0);
}

/// A pattern that is the same for all rows is parsed once.
template <LikePattern::Dialect dialect>
void like(const FunctionCall& call) {
  constexpr int kPattern = 1;
  const auto* known =
      static_cast<const LikePattern*>(sqlite3_get_auxdata(call.context(), kPattern));
  if (known != nullptr) return setMatch(call, *known);
  auto pattern = std::make_unique<LikePattern>(call.text(kPattern), dialect);
  setMatch(call, *pattern);
  sqlite3_set_auxdata(call.context(), kPattern, pattern.release(),
                      [](void* old) { delete static_cast<LikePattern*>(old); });
}

using W = Function::Writing;

constexpr Function kFunctions[] = {
    {u"LEN", 1, 1, "t", Type::Long, "jet_len", len},
    {u"LEFT", 2, 2, "tn", Type::Text, "jet_left", left},
    {u"RIGHT", 2, 2, "tn", Type::Text, "jet_right", right},
    {u"MID", 2, 3, "tn", Type::Text, "jet_mid", mid},
    {u"INSTR", 2, 4, "t", Type::Long, "jet_instr", instr, kPass, kFixed, W::InText},
    {u"UCASE", 1, 1, "t", Type::Text, "jet_ucase", letters<runtime::upperCase>},
    {u"LCASE", 1, 1, "t", Type::Text, "jet_lcase", letters<runtime::lowerCase>},
    {u"TRIM", 1, 1, "t", Type::Text, "jet_trim", trim<Ends::Both>},
    {u"LTRIM", 1, 1, "t", Type::Text, "jet_ltrim", trim<Ends::Left>},
    {u"RTRIM", 1, 1, "t", Type::Text, "jet_rtrim", trim<Ends::Right>},
    {u"SPACE", 1, 1, "n", Type::Text, "jet_space", space},
    {u"STRING", 2, 2, "nv", Type::Text, "jet_string", string},
    {u"STRCOMP", 2, 3, "ttn", Type::Integer, "jet_strcomp", strcomp},
    {u"ASC", 1, 1, "t", Type::Integer, "jet_asc", asc},
    {u"CHR", 1, 1, "n", Type::Text, "jet_chr", chr},
    // What operators need.
    helperFunction("jet_like", like<LikePattern::Dialect::Like>),
    helperFunction("jet_alike", like<LikePattern::Dialect::Alike>),
    helperFunction("jet_concat", concat, kSeen),
    helperFunction("jet_date_text", dateAsText),
    helperFunction("jet_single_text", singleAsText),
    helperFunction("jet_guid_text", guidAsText),
};

}  // namespace

std::span<const Function> textFunctions() {
  return kFunctions;
}

}  // namespace jetsql
