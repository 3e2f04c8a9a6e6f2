#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace layoutdata {

/// One key as a line of a layout file: five fields joined by ",", with no blanks, quoting or
/// escaping.
struct KeyRecord {
  std::int16_t KeyIndex = 0;
  std::u16string ProductId;  ///< decimal product id as the key table holds it, empty on a free key
  std::u16string Caption;    ///< as shown on the key; a comma in it is not escaped
  std::int32_t BackColour = 0;  ///< 0x00BBGGRR, or a system colour with the top bit set
  std::int32_t FontColour = 0;  ///< likewise
};

/// The record as a line, without its line end.
std::u16string toLine(const KeyRecord& record);

/// A line of a layout file, split at every comma. Each field is parsed only when it is requested,
/// so that a fault in one field doesn't keep earlier fields from being applied. Field 0, the key
/// index, is never read: the line's position in the file decides its key.
class KeyLine {
 public:
  /// An empty line has no field at all.
  explicit KeyLine(std::u16string line);

  /// Each of these raises SubscriptOutOfRange when the line has no such field.
  std::u16string_view ProductId() const { return field(1); }
  std::u16string_view Caption() const { return field(2); }
  /// Raises TypeMismatch when the field is no number, Overflow when it is beyond 32 bits.
  std::int32_t BackColour() const;
  /// Field 4: written as the font colour, applied by the editors as a typeface name (contract).
  std::u16string_view FontColour() const { return field(4); }

 private:
  std::u16string_view field(std::size_t number) const;

  std::u16string line_;
};

}  // namespace layoutdata
