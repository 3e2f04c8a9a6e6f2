#include "platform/forms/qt/Surface.h"

#include <QPaintEvent>
#include <QPainter>

#include "platform/forms/qt/Colours.h"

namespace forms::qt {

Surface::Surface(QWidget* parent, Colour colour) : QGroupBox(parent), colour_(colour) {
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void Surface::paintEvent(QPaintEvent* event) {
  QPainter(this).fillRect(event->rect(), drawnColour(colour_, palette()));
}

}  // namespace forms::qt
