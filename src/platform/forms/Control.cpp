#include "platform/forms/Control.h"

#include <QWidget>

#include "platform/forms/qt/Faces.h"
#include "platform/forms/qt/Pixels.h"
#include "platform/forms/qt/PlainToolTip.h"
#include "platform/forms/qt/WideText.h"
#include "platform/forms/qt/Window.h"

namespace forms {
namespace {

bool isDefault(const Font& font) {
  const Font usual;
  return font.face == usual.face && font.points == usual.points && font.weight == usual.weight;
}

}  // namespace

Control::Control(Container& container, const Design& design, std::int16_t index, QWidget* widget)
    : name_(design.name),
      index_(index),
      screen_(container.window()),
      widget_(widget),
      bounds_{design.left, design.top, design.width, design.height},
      tabIndex_(design.tabIndex),
      visible_(design.visible),
      font_(design.font) {
  widget_->setObjectName(QString::fromLatin1(design.name));
  // The default font is the application's, which every widget has already.
  if (!isDefault(font_)) widget_->setFont(qt::font(font_.face, font_.points, font_.weight));
  if (!design.toolTip.empty()) qt::setPlainToolTip(*widget_, design.toolTip);
  if (!visible_) widget_->hide();
  setGeometry();
  screen_.add(*this);
}

Control::~Control() {
  screen_.remove(*this);
  delete widget_;
}

double Control::scale() const {
  return screen_.scale();
}

void Control::rescaled() {
  widget_->setFont(qt::font(font_.face, font_.points * scale(), font_.weight));
}

void Control::layOut() {
  setGeometry();
  rescaled();
}

void Control::setGeometry() {
  widget_->setGeometry(qt::toPixels(bounds_, scale()));
}

void Control::Left(Twips left) {
  bounds_.left = left;
  setGeometry();
}

void Control::Top(Twips top) {
  bounds_.top = top;
  setGeometry();
}

void Control::Height(Twips height) {
  bounds_.height = height;
  setGeometry();
}

void Control::Visible(bool visible) {
  visible_ = visible;
  widget_->setVisible(visible);
}

}  // namespace forms
