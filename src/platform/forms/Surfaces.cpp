// The controls that only show something: picture box, label, image.

#include <QGroupBox>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>

#include "platform/forms/StandardControls.h"
#include "platform/forms/qt/Colours.h"
#include "platform/forms/qt/Pictures.h"
#include "platform/forms/qt/Text.h"
#include "platform/runtime/RunTimeError.h"

namespace forms {
namespace {

/// For screen readers a group of what it holds.
class Surface : public QGroupBox {
 public:
  Surface(QWidget* parent, Colour colour) : QGroupBox(parent), colour_(colour) {
    setAttribute(Qt::WA_OpaquePaintEvent);
  }

 protected:
  void paintEvent(QPaintEvent* event) override {
    QPainter(this).fillRect(event->rect(), qt::drawnColour(colour_, palette()));
  }

 private:
  Colour colour_;
};

/// A label paints its own text: no character of it is a mark or markup.
class LabelText : public QLabel {
 public:
  LabelText(QWidget* parent, const Design& design, Colour below)
      : QLabel(parent),
        back_(design.transparent ? below : design.backColour),
        fore_(design.foreColour),
        transparent_(design.transparent) {
    setTextFormat(Qt::PlainText);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const QColor back = qt::drawnColour(back_, palette());
    if (!transparent_) painter.fillRect(rect(), back);
    painter.setPen(qt::textOn(fore_, back, palette()));
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, text());
  }

 private:
  Colour back_;
  Colour fore_;
  bool transparent_;
};

class Tick : public QLabel {
 public:
  explicit Tick(QWidget* parent) : QLabel(parent) { setAccessibleName(QStringLiteral("Tick")); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    qt::paintTick(painter, rect());
  }
};

QWidget* makePicture(QWidget* parent, std::string_view resource) {
  if (resource != "tick") throw runtime::RunTimeError(runtime::ErrorNumber::FileNotFound);
  return new Tick(parent);
}

}  // namespace

PictureBox::PictureBox(Container& container, const Design& design)
    : Control(container, design, 0, new Surface(clientOf(container), design.backColour)),
      backColour_(design.backColour) {}

Label::Label(Container& container, const Design& design)
    : Control(container, design, 0,
              new LabelText(clientOf(container), design, backColourOf(container))) {
  Caption(design.caption);
}

void Label::Caption(std::u16string_view caption) {
  caption_ = caption;
  static_cast<QLabel*>(widget())->setText(qt::toQt(caption));
}

Image::Image(Container& container, const Design& design, std::string_view resource)
    : Control(container, design, 0, makePicture(clientOf(container), resource)) {}

}  // namespace forms
