#include "platform/profile/IniText.h"

#include <algorithm>
#include <utility>

namespace profile {
namespace {

bool isComment(std::string_view line) {
  return IniText::trimmed(line).starts_with(';');
}
bool isEmpty(std::string_view line) {
  return IniText::trimmed(line).empty();
}

/// The section's name, where the line is a header. Words behind the bracket count for nothing.
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

std::string_view takeLineEnd(std::string_view& rest) {
  const std::size_t length = rest.starts_with("\r\n") ? 2 : std::min<std::size_t>(rest.size(), 1);
  const std::string_view end = rest.substr(0, length);
  rest.remove_prefix(length);
  return end;
}

}  // namespace

IniText::IniText(std::string_view bytes, Fold fold) : fold_(fold) {
  while (!bytes.empty()) {
    const std::string_view text = bytes.substr(0, bytes.find_first_of("\r\n"));
    bytes.remove_prefix(text.size());
    const std::string_view end = takeLineEnd(bytes);
    lines_.push_back({std::string(text), std::string(end)});
  }
}

std::optional<std::string> IniText::value(std::string_view section, std::string_view key) const {
  const std::optional<Section> found = findSection(section);
  const std::optional<std::size_t> line = found ? findKey(*found, key) : std::nullopt;
  if (!line) return std::nullopt;
  const std::string& text = lines_[*line].text;
  return text.substr(text.find('=') + 1);
}

void IniText::setValue(std::string_view section, std::string_view key, std::string_view value,
                       std::string_view lineEnd) {
  const std::optional<Section> found = findSection(section);
  if (!found) {
    insertLine(lines_.size(), "[" + std::string(section) + "]", lineEnd);
    insertLine(lines_.size(), std::string(key) + "=" + std::string(value), lineEnd);
  } else if (const std::optional<std::size_t> line = findKey(*found, key)) {
    std::string& text = lines_[*line].text;
    text.replace(text.find('=') + 1, text.npos, value);
  } else {
    insertLine(placeForKey(*found), std::string(key) + "=" + std::string(value), lineEnd);
  }
}

std::string IniText::bytes() const {
  std::string bytes;
  for (const Line& line : lines_) bytes.append(line.text).append(line.end);
  return bytes;
}

bool IniText::isBlank(char character) {
  constexpr std::string_view kBlanks = " \t\v\f\x1A";
  return kBlanks.find(character) != kBlanks.npos;
}

std::string_view IniText::trimmed(std::string_view text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

std::optional<IniText::Section> IniText::findSection(std::string_view name) const {
  const std::u16string wanted = fold_(trimmed(name));
  for (std::size_t header = 0; header < lines_.size(); ++header) {
    const auto found = headerName(lines_[header].text);
    if (!found || fold_(*found) != wanted) continue;
    std::size_t end = header + 1;
    while (end < lines_.size() && !headerName(lines_[end].text)) ++end;
    return Section{header, end};
  }
  return std::nullopt;
}

std::optional<std::size_t> IniText::findKey(const Section& section, std::string_view key) const {
  const std::u16string wanted = fold_(trimmed(key));
  for (std::size_t line = section.header + 1; line < section.end; ++line) {
    const auto found = keyName(lines_[line].text);
    if (found && fold_(*found) == wanted) return line;
  }
  return std::nullopt;
}

/// The end of the section; but an empty line that only empty lines and comments follow parts it
/// from the next one, and so does what stands behind.
std::size_t IniText::placeForKey(const Section& section) const {
  std::size_t place = section.end;
  for (std::size_t line = section.end; line-- > section.header + 1;) {
    const std::string& text = lines_[line].text;
    if (isEmpty(text)) {
      place = line;
    } else if (!isComment(text)) {
      break;
    }
  }
  return place;
}

void IniText::insertLine(std::size_t place, std::string text, std::string_view lineEnd) {
  if (place > 0 && lines_[place - 1].end.empty()) lines_[place - 1].end = lineEnd;
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(place),
                Line{std::move(text), std::string(lineEnd)});
}

}  // namespace profile
