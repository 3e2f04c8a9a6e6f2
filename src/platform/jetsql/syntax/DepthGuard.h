#pragma once

#include "platform/jetsql/syntax/StatementError.h"

namespace jetsql {

/// Counts one level of nesting for as long as it lives, so that no text can exhaust the stack.
class DepthGuard {
 public:
  /// Raises the error for a statement that is too complex once `depth` has reached `deepest`.
  DepthGuard(int& depth, int deepest) : depth_(depth) {
    if (depth_ >= deepest) throw error::tooComplex();
    ++depth_;
  }
  ~DepthGuard() { --depth_; }
  DepthGuard(const DepthGuard&) = delete;
  DepthGuard& operator=(const DepthGuard&) = delete;

 private:
  int& depth_;
};

}  // namespace jetsql
