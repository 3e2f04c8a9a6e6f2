#include "platform/profile/IniText.h"

#include <algorithm>
#include <utility>

namespace profile {
namespace {

constexpr std::string_view kBlanks = " \t\v\f\x1A";  // the last one is an old end-of-file mark
constexpr std::string_view kLineEnds = "\r\n";

bool isComment(std::string_view line) {
  return IniText::trimmed(line).starts_with(';');
}
bool isEmpty(std::string_view line) {
  return IniText::trimmed(line).empty();
}

/// The section's name, where the line is a header. Text after the bracket is ignored.
std::optional<std::string_view> headerName(std::string_view line) {
  const std::string_view text = IniText::trimmed(line);
  const std::size_t close = text.find(']');
  if (!text.starts_with('[') || close == text.npos) return std::nullopt;
  return IniText::trimmed(text.substr(1, close - 1));
}

/// The key's name, where the line has one.
std::optional<std::string_view> keyName(std::string_view line) {
  const std::size_t equals = line.find('=');
  if (equals == line.npos || isComment(line)) return std::nullopt;
  return IniText::trimmed(line.substr(0, equals));
}

/// Compares names with a wanted one, ignoring case and surrounding blanks.
class NameMatcher {
 public:
  NameMatcher(std::string_view name, IniText::Fold fold)
      : name_(fold(IniText::trimmed(name))), fold_(fold) {}

  bool matches(std::optional<std::string_view> found) const {
    // A UTF-16 unit takes at most three bytes in UTF-8: a longer name can't match.
    return found && found->size() <= 3 * name_.size() && fold_(*found) == name_;
  }

 private:
  std::u16string name_;
  IniText::Fold fold_;
};

std::string keyLine(std::string_view key, std::string_view value) {
  return std::string(key).append("=").append(value);
}

}  // namespace

IniText::IniText(std::string bytes, Fold fold) : bytes_(std::move(bytes)), fold_(fold) {}

std::optional<std::string_view> IniText::value(std::string_view section,
                                               std::string_view key) const {
  const std::optional<Section> found = findSection(section);
  const std::optional<Line> line = found ? findKey(*found, key) : std::nullopt;
  if (!line) return std::nullopt;
  const std::string_view text = textOf(*line);
  return text.substr(text.find('=') + 1);
}

void IniText::setValue(std::string_view section, std::string_view key, std::string_view value,
                       std::string_view lineEnd) {
  const std::optional<Section> found = findSection(section);
  if (!found) {
    insert(bytes_.size(), "[" + std::string(section) + "]", lineEnd);
    insert(bytes_.size(), keyLine(key, value), lineEnd);
  } else if (const std::optional<Line> line = findKey(*found, key)) {
    const std::size_t begin = bytes_.find('=', line->begin) + 1;
    bytes_.replace(begin, line->end - begin, value);
  } else {
    insert(offsetForKey(*found), keyLine(key, value), lineEnd);
  }
}

bool IniText::isUtf16(std::string_view bytes) {
  if (bytes.size() < 2) return false;
  if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) return true;
  if ((bytes[0] == '\0') != (bytes[1] == '\0')) return true;
  // The first code unit may have no zero byte (non-Latin text), but that of a line feed has one.
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const std::string_view unit = bytes.substr(i, 2);
    if (unit == std::string_view("\n\0", 2) || unit == std::string_view("\0\n", 2)) return true;
  }
  return false;
}

std::string_view IniText::trimmed(std::string_view text) {
  const std::size_t begin = std::min(text.find_first_not_of(kBlanks), text.size());
  return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

IniText::Line IniText::lineAt(std::size_t begin) const {
  const std::size_t end = std::min(bytes_.find_first_of(kLineEnds, begin), bytes_.size());
  const std::size_t lineEnd = std::string_view(bytes_).substr(end).starts_with(kLineEnds) ? 2 : 1;
  return {begin, end, std::min(end + lineEnd, bytes_.size())};
}

std::string_view IniText::textOf(const Line& line) const {
  return std::string_view(bytes_).substr(line.begin, line.end - line.begin);
}

std::optional<IniText::Section> IniText::findSection(std::string_view name) const {
  const NameMatcher wanted(name, fold_);
  std::optional<Section> section;
  for (Line line{}; line.next < bytes_.size();) {
    line = lineAt(line.next);
    const std::optional<std::string_view> found = headerName(textOf(line));
    if (section && found) return Section{section->begin, line.begin};
    if (!section && wanted.matches(found)) section = Section{line.next, bytes_.size()};
  }
  return section;
}

std::optional<IniText::Line> IniText::findKey(const Section& section, std::string_view key) const {
  const NameMatcher wanted(key, fold_);
  for (std::size_t next = section.begin; next < section.end;) {
    const Line line = lineAt(next);
    if (wanted.matches(keyName(textOf(line)))) return line;
    next = line.next;
  }
  return std::nullopt;
}

/// Offset at which a new key is inserted: the end of the section, before its trailing blank lines
/// and any comments that follow them, which belong to the next section.
std::size_t IniText::offsetForKey(const Section& section) const {
  std::size_t offset = section.end;
  for (std::size_t next = section.begin; next < section.end;) {
    const Line line = lineAt(next);
    const std::string_view text = textOf(line);
    if (isEmpty(text))
      offset = std::min(offset, line.begin);
    else if (!isComment(text))
      offset = section.end;
    next = line.next;
  }
  return offset;
}

void IniText::insert(std::size_t offset, std::string text, std::string_view lineEnd) {
  text.append(lineEnd);
  const bool atLineStart = offset == 0 || kLineEnds.find(bytes_[offset - 1]) != kLineEnds.npos;
  bytes_.insert(offset, atLineStart ? text : std::string(lineEnd) + text);
}

}  // namespace profile
