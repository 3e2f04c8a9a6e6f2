#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace profile {

/// A file of "[section]" headers and "key=value" lines, which end with CR LF, LF or CR. What is not
/// set stays as it is, byte for byte: comments, blank lines, order, line ends, unknown lines. It
/// takes little more memory than the file. For this library's files.
///
/// A section begins at its header and ends at the next one; of several of one name the first
/// counts, and of several equal keys the first. Blanks round a name don't belong to it.
class IniText {
 public:
  /// Makes two spellings of one name equal, unit by unit.
  using Fold = std::u16string (*)(std::string_view name);

  IniText(std::string bytes, Fold fold);

  /// All that follows the key's "=" on its line, until the next change; nullopt where there is no
  /// such key.
  std::optional<std::string_view> value(std::string_view section, std::string_view key) const;

  /// Puts `value` after the key's "=". A missing key comes at the end of its section, a missing
  /// section at the end of the file, on lines that end with `lineEnd`.
  void setValue(std::string_view section, std::string_view key, std::string_view value,
                std::string_view lineEnd);

  /// The file's bytes, moved out.
  std::string takeBytes() { return std::move(bytes_); }

  /// True for a file in UTF-16, by its byte order mark, the zero in its first character, or a line
  /// feed of two bytes: its lines are not to be read or changed byte by byte.
  static bool isUtf16(std::string_view bytes);
  static std::string_view trimmed(std::string_view text);

 private:
  /// Offsets of a line: of its text, of the end of its text, and of the line after it.
  struct Line {
    std::size_t begin, end, next;
  };
  /// Offsets of the lines between a header and the next one.
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
