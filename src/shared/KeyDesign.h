#pragma once

#include <cstdint>
#include <string_view>

#include "platform/forms/MyCommandButton.h"

/// The design values that keys and command buttons of all screens share. Lengths are in twips,
/// extents in hundredths of a millimetre.
namespace keydesign {

/// The transparent colour of key 0, which differs from that of the other keys in both editors.
inline constexpr forms::Colour kFirstKeyTransparent = 14215660;
/// The one key without a focus mark, in both editors.
inline constexpr std::int16_t kKeyWithoutFocusMark = 3;

/// Bounds, tab index and visibility of a control.
struct Placement {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  int tabIndex = 0;
  bool visible = true;
};

/// The size of a button as its design stores it, in hundredths of a millimetre.
struct Extent {
  int x, y;
};

/// A control with default colours.
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
