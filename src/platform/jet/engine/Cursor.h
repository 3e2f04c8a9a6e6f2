#pragma once

#include "platform/jet/engine/Row.h"

namespace jet {

/// A walk over rows of a table, forward only.
class Cursor {
 public:
  virtual ~Cursor() = default;

  /// Moves to the next row, on the first call to the first one; false when there is none.
  virtual bool next() = 0;
  /// The current row; valid until the next call of `next`.
  virtual const Row& row() const = 0;
};

}  // namespace jet
