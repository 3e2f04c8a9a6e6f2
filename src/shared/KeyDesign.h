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

/// Where a control stands, and its turn in the tab order.
struct Placement {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  int tabIndex = 0;
  bool visible = true;
};
struct Extent {
  int x, y;
};

/// A control at its position, in the colours of a control that stores none.
constexpr forms::Design control(const char* name, std::u16string_view caption,
                                const Placement& at) {
  return {.name = name,
          .caption = caption,
          .left = at.left,
          .top = at.top,
          .width = at.width,
          .height = at.height,
          .tabIndex = at.tabIndex,
          .visible = at.visible};
}

constexpr MyCommandButton::ButtonDesign command(const char* name, std::u16string_view caption,
                                                const Placement& at, forms::Colour transparent,
                                                Extent extent) {
  MyCommandButton::ButtonDesign design{control(name, caption, at)};
  design.transparentColour = transparent;
  design.extentX = extent.x;
  design.extentY = extent.y;
  return design;
}

constexpr MyCommandButton::ButtonDesign key(std::int16_t index, const Placement& at,
                                            forms::Colour transparent, Extent extent) {
  MyCommandButton::ButtonDesign design =
      command("MyButton1", u"", at, index == 0 ? kFirstKeyTransparent : transparent, extent);
  design.showFocus = index != kKeyWithoutFocusMark;
  design.isKey = true;
  return design;
}

/// A box, list or key block in the window's colours.
constexpr forms::Design box(const char* name, const Placement& at) {
  forms::Design design = control(name, u"", at);
  design.backColour = forms::kWindowBackground;
  design.foreColour = forms::kWindowText;
  return design;
}

}  // namespace keydesign
