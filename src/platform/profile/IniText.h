#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace profile {

/// A file of "[section]" headers and "key=value" lines, which end with CR LF, LF or CR. Setting a
/// value keeps everything else byte for byte: comments, blank lines, order, line ends, unknown
/// lines. Its memory use is little more than the file's size. For use inside this library only.
///
/// A section extends from its header to the next header. Only the first of several sections with
/// the same name is used, and the first of several equal keys. Blanks around a name are ignored.
class IniText {
 public:
  /// Maps all spellings of a name that differ in case to one text, unit by unit.
  using Fold = std::u16string (*)(std::string_view name);

  IniText(std::string bytes, Fold fold);

  /// The text after the key's "=" on its line, valid until the next change; nullopt where there is
  /// no such key.
  std::optional<std::string_view> value(std::string_view section, std::string_view key) const;

  /// Sets the text after the key's "=". A missing key is added at the end of its section, a missing
  /// section at the end of the file, on lines that end with `lineEnd`.
  void setValue(std::string_view section, std::string_view key, std::string_view value,
                std::string_view lineEnd);

  /// The file's bytes, moved out.
  std::string takeBytes() { return std::move(bytes_); }

  /// True if `bytes` are UTF-16, which this class can't read or change: they begin with a byte
  /// order mark, have a zero byte in the first code unit, or contain a two-byte line feed.
  static bool isUtf16(std::string_view bytes);
  static std::string_view trimmed(std::string_view text);

 private:
  /// Offsets of a line: the begin and end of its text, and the line after it.
  struct Line {
    std::size_t begin, end, next;
  };
  /// Offsets of the lines between a header and the next one: begin and end.
  struct Section {
    std::size_t begin, end;
  };

  Line lineAt(std::size_t begin) const;
  std::string_view textOf(const Line& line) const;
  std::optional<Section> findSection(std::string_view name) const;
  std::optional<Line> findKey(const Section& section, std::string_view key) const;
  std::size_t offsetForKey(const Section& section) const;
  void insert(std::size_t offset, std::string text, std::string_view lineEnd);

  std::string bytes_;
  Fold fold_;
};

}  // namespace profile
