#include "platform/forms/MyCommandButton.h"

#include <array>

#include "platform/forms/qt/ButtonWidget.h"
#include "platform/forms/qt/Faces.h"
#include "platform/forms/qt/WideText.h"

namespace MyCommandButton {
namespace {

namespace qt = forms::qt;

/// The colours that paint a state.
struct PaintedBy {
  MyButton::StateColour MyButton::*back;
  MyButton::StateColour MyButton::*text;
};

/// In the order of `qt::ButtonState`.
constexpr std::array<PaintedBy, 4> kPaintedBy{{
    {&MyButton::backcolor, &MyButton::forecolor},
    {&MyButton::backcolorfocus, &MyButton::forecolorfocus},
    {&MyButton::backcolorover, &MyButton::forecolorover},
    {&MyButton::backcolordown, &MyButton::forecolordown},
}};

qt::ButtonColours coloursOf(const MyButton& button, qt::ButtonState state) {
  const PaintedBy& by = kPaintedBy[static_cast<std::size_t>(state)];
  return {(button.*by.back).painted(button.backcolor), (button.*by.text).painted(button.forecolor)};
}

qt::ButtonWidget& buttonOf(QWidget* widget) {
  return *static_cast<qt::ButtonWidget*>(widget);
}

}  // namespace

void MyButton::StateColour::operator()(forms::Colour colour) {
  if (set_ == colour) return;
  set_ = colour;
  buttonOf(button_.widget()).update();
}

MyButton::MyButton(forms::Container& container, const ButtonDesign& design, std::int16_t index)
    : Control(
          container, design, index,
          new qt::ButtonWidget(container.client(),
                               {.click = Click,
                                .doubleClick = DblClick,
                                .focus = GotFocus,
                                .hover = MouseOver,
                                .drop = OLEDragDrop,
                                .isCurrent = isCurrent},
                               [this](qt::ButtonState state) { return coloursOf(*this, state); })),
      font_{.name = std::u16string(design.font.face),
            .size = design.font.points,
            .weight = design.font.weight},
      showfocus_(design.showFocus),
      transparentcolor_(design.transparentColour),
      extentx_(design.extentX),
      extenty_(design.extentY) {
  qt::ButtonWidget& button = buttonOf(widget());
  if (design.isKey) {
    button.setKeyNumber(index);
    button.setObjectName(QStringLiteral("%1(%2)").arg(design.name).arg(index));
  }
  button.setShowsFocus(showfocus_);
  applyFont();
  caption_ = design.caption;
  button.setCaption(qt::toQt(caption_));
}

void MyButton::rescaled() {
  buttonOf(widget()).setScale(scale());
  applyFont();
}

void MyButton::applyFont() {
  buttonOf(widget()).setTextFont(qt::font(font_.name, font_.size * scale(), font_.weight));
}

void MyButton::caption(std::u16string_view text) {
  if (text == caption_) return;
  caption_ = text;
  buttonOf(widget()).setCaption(qt::toQt(caption_));
}

void MyButton::font(std::u16string_view face) {
  if (face == font_.name) return;
  font_.name = face;
  applyFont();
}

void MyButton::oledropmode(std::int16_t mode) {
  oledropmode_ = mode;
  buttonOf(widget()).setAcceptDrops(mode == forms::kDropManual);
}

}  // namespace MyCommandButton
