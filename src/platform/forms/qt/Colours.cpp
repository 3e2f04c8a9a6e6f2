#include "platform/forms/qt/Colours.h"

#include <array>
#include <cmath>

namespace forms::qt {
namespace {

constexpr quint32 kSystemBit = 0x80000000;
constexpr double kReadableContrast = 4.5;

/// A system colour: its role in the palette, and its default value in the light theme.
struct SystemColour {
  QPalette::ColorRole role;
  QRgb lightThemeDefault;
};

// In the order of the system colours' numbers.
constexpr std::array<SystemColour, 25> kSystemColours{{
    {QPalette::Mid, 0xffc8c8c8},              // scroll bar
    {QPalette::Window, 0xff000000},           // desktop
    {QPalette::Highlight, 0xff99b4d1},        // active title bar
    {QPalette::Window, 0xffbfcddb},           // inactive title bar
    {QPalette::Window, 0xfff0f0f0},           // menu
    {QPalette::Base, 0xffffffff},             // window
    {QPalette::WindowText, 0xff646464},       // window frame
    {QPalette::WindowText, 0xff000000},       // menu text
    {QPalette::Text, 0xff000000},             // window text
    {QPalette::HighlightedText, 0xff000000},  // title text
    {QPalette::Mid, 0xffb4b4b4},              // active border
    {QPalette::Mid, 0xfff4f7fc},              // inactive border
    {QPalette::Dark, 0xffababab},             // application work space
    {QPalette::Highlight, 0xff0078d7},        // highlight
    {QPalette::HighlightedText, 0xffffffff},  // highlighted text
    {QPalette::Button, 0xfff0f0f0},           // button face
    {QPalette::Dark, 0xffa0a0a0},             // button shadow
    {QPalette::PlaceholderText, 0xff6d6d6d},  // grey text
    {QPalette::ButtonText, 0xff000000},       // button text
    {QPalette::WindowText, 0xff434e54},       // inactive title text
    {QPalette::Light, 0xffffffff},            // button highlight
    {QPalette::Shadow, 0xff696969},           // dark shadow
    {QPalette::Midlight, 0xffe3e3e3},         // light edge
    {QPalette::ToolTipText, 0xff000000},      // tool tip text
    {QPalette::ToolTipBase, 0xffffffe1},      // tool tip
}};

bool isSystem(Colour colour) {
  return (static_cast<quint32>(colour) & kSystemBit) != 0;
}

const SystemColour& systemColour(Colour colour) {
  const auto number = static_cast<quint32>(colour) & 0xFFU;
  constexpr std::size_t kButtonFaceNumber = 15;
  return kSystemColours[number < kSystemColours.size() ? number : kButtonFaceNumber];
}

double luminance(const QColor& colour) {
  const auto part = [](double value) {
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) +
         0.0722 * part(colour.blueF());
}

}  // namespace

QColor drawnColour(Colour colour, const QPalette& palette) {
  if (isSystem(colour)) return palette.color(systemColour(colour).role);
  return {colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF};
}

Colour storedColour(const QColor& colour) {
  return colour.red() | colour.green() << 8 | colour.blue() << 16;
}

QColor textOn(Colour text, const QColor& background, const QPalette& palette) {
  const QColor drawn = drawnColour(text, palette);
  if (!isSystem(text)) return drawn;
  const double drawnContrast = contrast(drawn, background);
  if (drawnContrast >= kReadableContrast) return drawn;
  const QColor lightThemeDefault(systemColour(text).lightThemeDefault);
  return contrast(lightThemeDefault, background) > drawnContrast ? lightThemeDefault : drawn;
}

double contrast(const QColor& a, const QColor& b) {
  const double one = luminance(a) + 0.05;
  const double other = luminance(b) + 0.05;
  return qMax(one, other) / qMin(one, other);
}

QColor mixed(const QColor& a, const QColor& b, double share) {
  const auto mix = [share](int x, int y) { return qRound(x + (y - x) * share); };
  return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

QColor markOn(const QColor& background) {
  return contrast(background, Qt::white) >= contrast(background, Qt::black) ? Qt::white : Qt::black;
}

}  // namespace forms::qt
