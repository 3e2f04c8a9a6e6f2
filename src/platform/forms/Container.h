#pragma once

#include "platform/forms/Measures.h"

class QWidget;

namespace forms {

namespace qt {
class Window;
}

/// What can hold controls: a screen, a picture box, a frame. Its members serve the controls that
/// are made in it; above this library the types that they return are unknown.
class Container {
 public:
  virtual ~Container() = default;
  /// The widget that its controls are made in.
  virtual QWidget* client() const = 0;
  /// The window of the screen.
  virtual qt::Window& window() const = 0;
  /// The colour that shows through a transparent control.
  virtual Colour backColour() const = 0;
};

}  // namespace forms
