#pragma once

#include <cstdint>
#include <string_view>

#include "platform/forms/MyCommandButton.h"

/// The stored values that the keys and command buttons of all screens have in common. Lengths are
/// in twips; extents, kept as stored, in hundredths of a millimetre.
namespace keydesign {

/// Key 0 of either editor stores a transparent colour of its own.
inline constexpr forms::Colour kFirstKeyTransparent = 14215660;
/// Key 3 of either editor stores no focus setting and so has the control's default, no focus mark.
inline constexpr std::int16_t kKeyWithoutFocusMark = 3;

struct Place {
  int left, top, width, height;
};
struct Extent {
  int x, y;
};

constexpr MyCommandButton::ButtonDesign key(std::int16_t index, Place place, int tabIndex,
                                            forms::Colour transparent, Extent extent) {
  return {{.name = "MyButton1",
           .left = place.left,
           .top = place.top,
           .width = place.width,
           .height = place.height,
           .tabIndex = tabIndex},
          index == 0 ? kFirstKeyTransparent : transparent,
          index != kKeyWithoutFocusMark,
          true,
          extent.x,
          extent.y};
}

constexpr MyCommandButton::ButtonDesign command(const char* name, std::u16string_view caption,
                                                Place place, int tabIndex,
                                                forms::Colour transparent, Extent extent) {
  return {{.name = name,
           .caption = caption,
           .left = place.left,
           .top = place.top,
           .width = place.width,
           .height = place.height,
           .tabIndex = tabIndex},
          transparent,
          true,
          false,
          extent.x,
          extent.y};
}

/// A box, list or key block in the window's colours.
constexpr forms::Design box(const char* name, int left, int top, int width, int height,
                            int tabIndex, bool visible = true) {
  return {.name = name,
          .left = left,
          .top = top,
          .width = width,
          .height = height,
          .tabIndex = tabIndex,
          .visible = visible,
          .backColour = forms::kWindowBackground,
          .foreColour = forms::kWindowText};
}

}  // namespace keydesign
