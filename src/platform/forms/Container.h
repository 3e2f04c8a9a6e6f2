#pragma once

#include "platform/forms/Measures.h"

class QWidget;

namespace forms {

namespace qt {
class Window;
}

/// Anything that can hold controls: a screen, a picture box, a frame. Only controls call its
/// members; other libraries can't use the types that these return.
class Container {
 public:
  virtual ~Container() = default;
  /// The widget that is the parent of its controls' widgets.
  virtual QWidget* client() const = 0;
  /// The window of the screen.
  virtual qt::Window& window() const = 0;
  /// The colour that shows through a transparent control.
  virtual Colour backColour() const = 0;
};

}  // namespace forms
