#include "platform/forms/qt/LabelText.h"

#include <QPainter>

#include "platform/forms/qt/Colours.h"

namespace forms::qt {

LabelText::LabelText(QWidget* parent, const Design& design, Colour below)
    : QLabel(parent),
      back_(design.transparent ? below : design.backColour),
      fore_(design.foreColour),
      transparent_(design.transparent) {
  setTextFormat(Qt::PlainText);
}

void LabelText::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QColor back = drawnColour(back_, palette());
  if (!transparent_) painter.fillRect(rect(), back);
  painter.setPen(textOn(fore_, back, palette()));
  painter.drawText(rect(), Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, text());
}

}  // namespace forms::qt
