#pragma once

#include <cstdint>
#include <functional>

#include "platform/runtime/Integer16.h"

/// The arrangement of the keys in the autofill view: upwards from the bottom left, column by
/// column. All lengths are in twips, relative to the key block.
namespace keygeometry {

struct Settings {
  std::int32_t StartLeft = 0;       ///< left of the first column
  std::int32_t StartTop = 0;        ///< top of the bottom row
  runtime::Integer16 rows;          ///< keys in a column
  runtime::Integer16 Space;         ///< gap between keys, both ways
  runtime::Integer16 ButtonHeight;  ///< height of a key, and row pitch without the gap
  runtime::Integer16 ButtonWidth;   ///< column pitch without the gap; a key's width stays as it is
};

/// Reads the six settings in the order of the struct. An absent one has its default. Raises
/// TypeMismatch for a value that is no number (or empty), Overflow for a number beyond the range of
/// its member.
Settings ReadSettings();

/// Position and height of a key.
struct KeyPosition {
  std::int16_t Top = 0;
  std::int16_t Left = 0;
  std::int16_t Height = 0;
};

/// Computes the positions of the keys 0 to `keyCount` - 1 in this order and passes each to `apply`
/// before it computes the next. Raises Overflow when a 16-bit value overflows; positions already
/// passed stay applied.
void Arrange(const Settings& settings, std::int16_t keyCount,
             const std::function<void(std::int16_t key, const KeyPosition& position)>& apply);

}  // namespace keygeometry
