#pragma once

#include <exception>
#include <utility>

namespace jetsql {

/// The exception that a callback of SQLite caught, since none may pass through SQLite. It is thrown
/// again once SQLite has returned.
class KeptFailure {
 public:
  /// Stores the exception that is being handled, unless one is stored already.
  void keep() noexcept {
    if (!kept_) kept_ = std::current_exception();
  }
  void rethrow() {
    if (kept_) std::rethrow_exception(std::exchange(kept_, nullptr));
  }

 private:
  std::exception_ptr kept_;
};

/// Runs the body of a callback; if it throws, stores the exception and returns false.
template <class Body>
bool guarded(KeptFailure& failure, Body body) noexcept {
  try {
    body();
    return true;
  } catch (...) {
    failure.keep();
    return false;
  }
}

}  // namespace jetsql
