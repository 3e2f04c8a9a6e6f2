#pragma once

#include <cstdint>
#include <string_view>

namespace forms {

/// A length or position on a screen: 1/1440 inch. Fifteen twips are one logical pixel of the
/// toolkit; only this library converts between the two.
struct Twips {
  int value = 0;

  constexpr Twips(int twips = 0) : value(twips) {}
  constexpr auto operator<=>(const Twips&) const = default;
};

inline constexpr int kTwipsPerPixel = 15;

/// A position, from the left and the top.
struct Offset {
  Twips left, top;
};

/// A rectangle in its container.
struct Bounds {
  Twips left, top, width, height;
};

/// A colour: 0x00BBGGRR for a plain one, top bit set for a system colour.
using Colour = std::int32_t;

inline constexpr Colour kWhite = 0xFFFFFF;
inline constexpr Colour kBlack = 0;
inline constexpr Colour kWindowBackground = -2147483643;  ///< 0x80000005
inline constexpr Colour kWindowText = -2147483640;        ///< 0x80000008
inline constexpr Colour kButtonFace = -2147483633;        ///< 0x8000000F
inline constexpr Colour kButtonText = -2147483630;        ///< 0x80000012

/// A typeface, its size in points and its weight (400: regular). A typeface that isn't installed is
/// replaced by Arial or one with the same metrics.
struct Font {
  std::u16string_view face = u"Arial";
  double points = 9.75;
  int weight = 400;
};

/// The initial properties of a control: one row of the form's design table.
struct Design {
  const char* name = "";  ///< also the widget's object name
  std::u16string_view caption{};
  Twips left, top, width, height;  ///< relative to the container's client area
  int tabIndex = -1;               ///< rank in the tab order; -1: none
  bool visible = true;
  std::u16string_view toolTip{};
  Colour backColour = kButtonFace;
  Colour foreColour = kButtonText;
  Font font{};
  bool transparent = false;  ///< labels: the back colour isn't painted
};

}  // namespace forms
