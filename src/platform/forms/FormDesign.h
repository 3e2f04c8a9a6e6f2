#pragma once

#include <optional>
#include <string_view>

#include "platform/forms/Measures.h"

namespace forms {

enum class BorderStyle { None, FixedSingle, Sizable, FixedDialog };
enum class StartPosition { PlatformDefault, CentreScreen };

/// The initial properties of a form (without its controls). Width and height are those of the
/// client area.
struct FormDesign {
  const char* name = "";
  std::u16string_view caption{};
  Twips width, height;
  BorderStyle border = BorderStyle::Sizable;
  bool minimiseBox = true;
  bool maximiseBox = true;
  bool startMaximised = false;
  StartPosition position = StartPosition::PlatformDefault;
  /// Position of the client area on the desktop once the user has restored a maximised screen;
  /// where none is stored the platform decides.
  std::optional<Offset> restoredAt{};
  bool inTaskBar = true;
  Colour backColour = kButtonFace;
};

}  // namespace forms
