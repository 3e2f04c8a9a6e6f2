#pragma once

#include <Qt>

namespace forms::qt {

class ButtonWidget;

/// Row and column of a key among the visible keys of its container, counted from 1.
struct KeyBlockPosition {
  int row;
  int column;
};
KeyBlockPosition positionOf(const ButtonWidget& key);

/// The next shown key in the direction of an arrow key, in the same row or column; null where there
/// is none, and for any other key of the keyboard.
ButtonWidget* neighbour(const ButtonWidget& key, int arrow);

/// Tells screen readers which keys of the key block have become current or are no longer current.
void announceCurrentKeys(const ButtonWidget& key);

}  // namespace forms::qt
