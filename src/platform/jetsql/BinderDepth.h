#pragma once

#include "platform/jetsql/Binder.h"
#include "platform/jetsql/Error.h"

namespace jetsql {

/// Counts how many levels of expressions and queries are being bound, so that saved queries over
/// saved queries can't exhaust the stack.
class BinderDepth {
 public:
  explicit BinderDepth(Binder& binder) : binder_(binder) {
    if (binder_.depth_ >= kDeepest) throw error::tooComplex();
    ++binder_.depth_;
  }
  ~BinderDepth() { --binder_.depth_; }
  BinderDepth(const BinderDepth&) = delete;
  BinderDepth& operator=(const BinderDepth&) = delete;

 private:
  static constexpr int kDeepest = 1500;

  Binder& binder_;
};

}  // namespace jetsql
