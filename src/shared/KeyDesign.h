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

struct Bounds {
  int left, top, width, height;
};
struct Extent {
  int x, y;
};

constexpr MyCommandButton::ButtonDesign command(const char* name, std::u16string_view caption,
                                                Bounds bounds, int tabIndex,
                                                forms::Colour transparent, Extent extent) {
  MyCommandButton::ButtonDesign design{{.name = name,
                                        .caption = caption,
                                        .left = bounds.left,
                                        .top = bounds.top,
                                        .width = bounds.width,
                                        .height = bounds.height,
                                        .tabIndex = tabIndex}};
  design.transparentColour = transparent;
  design.extentX = extent.x;
  design.extentY = extent.y;
  return design;
}

constexpr MyCommandButton::ButtonDesign key(std::int16_t index, Bounds bounds, int tabIndex,
                                            forms::Colour transparent, Extent extent) {
  MyCommandButton::ButtonDesign design = command(
      "MyButton1", u"", bounds, tabIndex, index == 0 ? kFirstKeyTransparent : transparent, extent);
  design.showFocus = index != kKeyWithoutFocusMark;
  design.isKey = true;
  return design;
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
