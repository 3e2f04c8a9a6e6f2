#pragma once

#include <Qt>

namespace forms::qt {

class KeyFace;

/// Where a key stands among the shown keys of its area. Rows and columns count from 1, as seen.
struct KeyPosition {
  int row;
  int column;
};
KeyPosition positionOf(const KeyFace& key);

/// The next shown key in the direction of an arrow key, in the same row or column; null where there
/// is none, and for any other key of the keyboard.
KeyFace* neighbour(const KeyFace& key, int arrow);

/// Tells screen readers of the keys around, `key` among them, that have become current or are so no
/// more.
void tellCurrentKeys(const KeyFace& key);

}  // namespace forms::qt
