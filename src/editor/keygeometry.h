#pragma once

#include <cstdint>
#include <functional>

#include "platform/runtime/Integer16.h"

/// The arrangement of the keys in the autofill view: from the bottom left, up the first column,
/// then on from the bottom of the next one. All lengths are twips within the key block.
namespace keygeometry {

struct Settings {
  std::int32_t StartLeft = 0;       ///< left of the first column
  std::int32_t StartTop = 0;        ///< top of the bottom row
  runtime::Integer16 rows;          ///< keys in a column
  runtime::Integer16 Space;         ///< gap between keys, both ways
  runtime::Integer16 ButtonHeight;  ///< height of a key, and row pitch without the gap
  runtime::Integer16 ButtonWidth;   ///< column pitch without the gap; a key's width stays as it is
};

/// Reads the six settings in their order, each with its default where it is absent. Raises
/// TypeMismatch for a text that is no number (the empty text too) and Overflow for a number beyond
/// the setting's range.
Settings ReadSettings();

/// Position and height of a key.
struct KeyPosition {
  std::int16_t Top = 0;
  std::int16_t Left = 0;
  std::int16_t Height = 0;
};

/// Computes the positions of `keys` keys in index order and passes each to `apply` at once. Raises
/// Overflow at the step at which a 16-bit value overflows; the earlier keys have their positions by
/// then.
void Arrange(const Settings& settings, std::int16_t keys,
             const std::function<void(std::int16_t key, const KeyPosition& position)>& apply);

}  // namespace keygeometry
