#pragma once

#include "platform/forms/Measures.h"

class QWidget;

namespace forms {

/// A control as its screen's window sees it.
class WindowPart {
 public:
  virtual QWidget* widget() const = 0;
  /// Rank in the window's tab order, -1 for none.
  virtual int tabIndex() const = 0;
  /// Position in the container, and size.
  virtual const Bounds& bounds() const = 0;
  /// Sets position and font for the scale at which the window is laid out.
  virtual void layOut() = 0;

 protected:
  ~WindowPart() = default;
};

}  // namespace forms
