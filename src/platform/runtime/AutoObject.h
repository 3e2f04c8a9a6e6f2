#pragma once

#include <memory>

namespace runtime {

/// A variable that is absent at first and creates its object at the first use. After `setAbsent`
/// the next use creates a new object.
template <class T>
class AutoObject {
 public:
  T& operator*() { return object(); }
  T* operator->() { return &object(); }

  /// Creates a new object and releases the old one.
  void setNew() { object_ = std::make_unique<T>(); }
  /// Releases the object.
  void setAbsent() { object_.reset(); }

 private:
  T& object() {
    if (!object_) setNew();
    return *object_;
  }

  std::unique_ptr<T> object_;
};

}  // namespace runtime
