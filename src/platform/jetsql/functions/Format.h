#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace jetsql {

/// A pattern of the function `Format`, or the name of one.
///
/// Of numbers: digits `0` and `#`, a point, commas for thousands, `%`, an exponent (`E+`, `E-`), up
/// to four sections between semicolons (positive, negative, zero, null). Of dates: `d`, `dd`,
/// `ddd`, `dddd`, `m` to `mmmm` (minutes after an hour), `yy`, `yyyy`, `q` (quarter), `w`
/// (weekday), `h`, `hh`, `n`, `nn`, `s`, `ss`, `AM/PM`. In both: texts in quotes or after a
/// backslash.
class Format {
 public:
  explicit Format(std::u16string_view pattern);

  /// True for a pattern of a date or time.
  bool isDate() const;

  std::u16string date(double days) const;
  std::u16string number(double number) const;
  /// Null: the fourth section.
  std::u16string null() const;

 private:
  struct Section;
  std::vector<Section> sections() const;

  bool isGeneralDate_;
  /// The pattern's characters, letters in lower case. A text in quotes or after a backslash is one
  /// character, 0.
  std::u16string symbols_;
  std::vector<std::u16string> texts_;  ///< of each symbol, as written
};

}  // namespace jetsql
