#pragma once

#include "platform/jet/engine/Row.h"

namespace jet {

/// A walk over rows of a table, forward only.
class Cursor {
 public:
  virtual ~Cursor() = default;

  /// Goes to the next row, at first to the first; false past the last one.
  virtual bool next() = 0;
  /// The row that the cursor stands on; valid until the next `next`.
  virtual const Row& row() const = 0;
};

}  // namespace jet
