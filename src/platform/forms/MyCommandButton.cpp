#include "platform/forms/MyCommandButton.h"

#include <QAbstractButton>
#include <QDragEnterEvent>
#include <QEnterEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "platform/forms/qt/Colours.h"
#include "platform/forms/qt/DoublePress.h"
#include "platform/forms/qt/DragData.h"
#include "platform/forms/qt/Faces.h"
#include "platform/forms/qt/KeyPainter.h"
#include "platform/forms/qt/Measures.h"
#include "platform/forms/qt/Raise.h"
#include "platform/forms/qt/Text.h"

namespace MyCommandButton {

namespace qt = forms::qt;

/// The toolkit's side of a button: it paints the button's properties and reports what the user
/// does.
class MyButton::Face : public QAbstractButton {
 public:
  Face(MyButton& button, QWidget* parent) : QAbstractButton(parent), button_(button) {
    setFocusPolicy(Qt::StrongFocus);
  }

  void setCaption(const QString& text) {
    caption_.set(text);
    update();
  }

  void setTextFont(const QFont& font) {
    caption_.set(font);
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  // A press through the accessibility interface comes by the toolkit's own click.
  void nextCheckState() override { qt::raise(button_.Click); }

 private:
  void hold(bool down) {
    if (held_ == down) return;
    held_ = down;
    update();
  }
  void markDrop(bool on) {
    if (dropMark_ == on) return;
    dropMark_ = on;
    update();
  }
  static bool take(QDropEvent& event);

  MyButton& button_;
  qt::CaptionLayout caption_;
  qt::DoublePress doublePress_;
  bool pressed_ = false;  ///< a press of the mouse or the space bar is under way
  bool held_ = false;     ///< and holds the button down
  bool hovered_ = false;
  bool dropMark_ = false;
};

void MyButton::Face::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  forms::Colour back = button_.backcolor_;
  forms::Colour text = button_.forecolor_;
  if (held_) {
    back = button_.backcolordown_;
    text = button_.forecolordown_.value_or(text);
  } else if (hovered_) {
    back = button_.backcolorover_.value_or(back);
    text = button_.forecolorover_.value_or(text);
  } else if (hasFocus()) {
    back = button_.backcolorfocus_.value_or(back);
    text = button_.forecolorfocus_.value_or(text);
  }
  qt::KeyLook look;
  look.back = qt::drawnColour(back, palette());
  look.text = qt::textOn(text, look.back, palette());
  look.scale = button_.scale();
  look.hovered = hovered_;
  look.pressed = held_;
  look.focusMark = hasFocus() && button_.showfocus_;
  look.dropMark = dropMark_;
  qt::paintKey(painter, rect(), look, caption_, palette().color(QPalette::Highlight));
}

void MyButton::Face::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  doublePress_.press(*event);
  pressed_ = true;
  hold(true);
}

void MyButton::Face::mouseMoveEvent(QMouseEvent* event) {
  if (pressed_) hold(rect().contains(event->position().toPoint()));
}

void MyButton::Face::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !pressed_) return;
  pressed_ = false;
  const bool inside = held_;
  hold(false);
  if (inside) qt::raise(button_.Click);
}

// The second press of a double press is no click: its release finds nothing under way.
void MyButton::Face::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  if (doublePress_.completes(*event))
    qt::raise(button_.DblClick);
  else
    mousePressEvent(event);
}

void MyButton::Face::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Space) {
    event->ignore();
    return;
  }
  if (event->isAutoRepeat()) return;
  pressed_ = true;
  hold(true);
}

void MyButton::Face::keyReleaseEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Space) {
    event->ignore();
    return;
  }
  if (event->isAutoRepeat() || !pressed_) return;
  pressed_ = false;
  hold(false);
  qt::raise(button_.Click);
}

void MyButton::Face::enterEvent(QEnterEvent*) {
  hovered_ = true;
  update();
  qt::raise(button_.MouseOver);
}

void MyButton::Face::leaveEvent(QEvent*) {
  hovered_ = false;
  update();
}

void MyButton::Face::focusInEvent(QFocusEvent*) {
  update();
  qt::raise(button_.GotFocus);
}

void MyButton::Face::focusOutEvent(QFocusEvent*) {
  pressed_ = false;
  held_ = false;
  update();
}

/// Accepts a drag of text, as a move where the source offers one.
bool MyButton::Face::take(QDropEvent& event) {
  if (!event.mimeData()->hasFormat(qt::kPlainText)) {
    event.ignore();
    return false;
  }
  event.setDropAction(event.possibleActions() & Qt::MoveAction ? Qt::MoveAction : Qt::CopyAction);
  event.accept();
  return true;
}

void MyButton::Face::dragEnterEvent(QDragEnterEvent* event) {
  markDrop(take(*event));
}

void MyButton::Face::dragMoveEvent(QDragMoveEvent* event) {
  take(*event);
}

void MyButton::Face::dragLeaveEvent(QDragLeaveEvent*) {
  markDrop(false);
}

void MyButton::Face::dropEvent(QDropEvent* event) {
  markDrop(false);
  if (!take(*event)) return;
  qt::DroppedData dropped(*event->mimeData());
  std::int32_t effect = event->dropAction() == Qt::MoveAction ? forms::kDropMove : forms::kDropCopy;
  qt::raise(button_.OLEDragDrop, dropped, effect, qt::buttonCode(event->buttons()),
            qt::shiftState(event->modifiers()), qt::toTwips(event->position().x(), button_.scale()),
            qt::toTwips(event->position().y(), button_.scale()));
}

MyButton::MyButton(forms::Container& container, const ButtonDesign& design, std::int16_t index)
    : Control(container, design, index, new Face(*this, clientOf(container))),
      showfocus_(design.showFocus),
      isKey_(design.isKey),
      transparentcolor_(design.transparentColour),
      extentx_(design.extentX),
      extenty_(design.extentY) {
  if (isKey_) {
    const QString number = QString::number(index);
    widget()->setObjectName(QString::fromLatin1(design.name) + '(' + number + ')');
    widget()->setAccessibleDescription("Key " + number);
  }
  font_.name = design.font.face;
  font_.size = design.font.points;
  font_.weight = design.font.weight;
  applyFont();
  caption_ = design.caption;
  showCaption();
}

MyButton::~MyButton() = default;

MyButton::Face& MyButton::face() const {
  return *static_cast<Face*>(widget());
}

void MyButton::rescaled() {
  applyFont();
}

void MyButton::applyFont() {
  face().setTextFont(qt::font(font_.name, font_.size * scale(), font_.weight));
}

void MyButton::caption(std::u16string_view text) {
  if (text == caption_) return;
  caption_ = text;
  showCaption();
}

void MyButton::showCaption() {
  const QString caption = qt::toQt(caption_);
  face().setCaption(caption);
  face().setAccessibleName(caption.isEmpty() && isKey_ ? face().accessibleDescription() : caption);
}

void MyButton::font(std::u16string_view faceName) {
  if (faceName == font_.name) return;
  font_.name = faceName;
  applyFont();
}

template <class Held>
void MyButton::setColour(Held& held, forms::Colour colour) {
  if (held == colour) return;
  held = colour;
  face().update();
}

void MyButton::backcolor(forms::Colour colour) {
  setColour(backcolor_, colour);
}

void MyButton::forecolor(forms::Colour colour) {
  setColour(forecolor_, colour);
}

void MyButton::backcolordown(forms::Colour colour) {
  setColour(backcolordown_, colour);
}

void MyButton::backcolorfocus(forms::Colour colour) {
  setColour(backcolorfocus_, colour);
}

void MyButton::backcolorover(forms::Colour colour) {
  setColour(backcolorover_, colour);
}

void MyButton::forecolordown(forms::Colour colour) {
  setColour(forecolordown_, colour);
}

void MyButton::forecolorfocus(forms::Colour colour) {
  setColour(forecolorfocus_, colour);
}

void MyButton::forecolorover(forms::Colour colour) {
  setColour(forecolorover_, colour);
}

void MyButton::oledropmode(std::int16_t mode) {
  oledropmode_ = mode;
  face().setAcceptDrops(mode == forms::kDropManual);
}

}  // namespace MyCommandButton
