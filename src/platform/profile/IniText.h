#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace profile {

/// The lines of a file of "[section]" headers and "key=value" lines. What is not set stays as it
/// is, byte for byte: comments, blank lines, order, line ends, unknown lines. For this library's
/// files.
///
/// A section begins at its header and ends at the next one; of several of one name the first
/// counts, and of several equal keys the first. Blanks round a name don't belong to it.
class IniText {
 public:
  /// Makes two spellings of one name equal.
  using Fold = std::u16string (*)(std::string_view name);

  IniText(std::string_view bytes, Fold fold);

  /// All that stands behind the key's "=" on its line; nothing where there is no such key.
  std::optional<std::string> value(std::string_view section, std::string_view key) const;

  /// Puts `value` behind the key's "=". A missing key comes at the end of its section, a missing
  /// section at the end of the file, on lines that end with `lineEnd`.
  void setValue(std::string_view section, std::string_view key, std::string_view value,
                std::string_view lineEnd);

  std::string bytes() const;

  /// True for what is left out round names and values: blanks, tabs, an old end-of-file mark.
  static bool isBlank(char character);
  static std::string_view trimmed(std::string_view text);

 private:
  struct Line {
    std::string text;
    std::string end;  ///< CR LF, LF or CR; empty on a last line that has none
  };
  struct Section {
    std::size_t header;
    std::size_t end;  ///< the line behind its last one
  };

  std::optional<Section> findSection(std::string_view name) const;
  std::optional<std::size_t> findKey(const Section& section, std::string_view key) const;
  std::size_t placeForKey(const Section& section) const;
  void insertLine(std::size_t place, std::string text, std::string_view lineEnd);

  std::vector<Line> lines_;
  Fold fold_;
};

}  // namespace profile
