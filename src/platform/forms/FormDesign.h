#pragma once

#include <optional>
#include <string_view>

#include "platform/forms/Measures.h"

namespace forms {

enum class BorderStyle { None, FixedSingle, Sizable, FixedDialog };
enum class StartPosition { PlatformDefault, CentreScreen };

/// What a screen stores for itself. Width and height are those of the client area.
struct FormDesign {
  const char* name = "";
  std::u16string_view caption{};
  Twips width, height;
  BorderStyle border = BorderStyle::Sizable;
  bool minimiseBox = true;
  bool maximiseBox = true;
  bool startMaximised = false;
  StartPosition position = StartPosition::PlatformDefault;
  /// Where the client area stands on the desktop once the user has restored a maximised screen; the
  /// platform decides where none is stored.
  std::optional<Offset> restoredAt{};
  bool inTaskBar = true;
  Colour backColour = kButtonFace;
};

}  // namespace forms
