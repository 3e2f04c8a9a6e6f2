#pragma once

#include <QAbstractButton>
#include <cstdint>
#include <functional>

#include "platform/forms/DataObject.h"
#include "platform/forms/Event.h"
#include "platform/forms/Measures.h"
#include "platform/forms/qt/ButtonPainter.h"
#include "platform/forms/qt/DoublePress.h"

namespace forms::qt {

/// The events of a button, raised through the dispatcher, and a query for screen readers.
struct ButtonEvents {
  const Event<>& click;
  const Event<>& doubleClick;
  const Event<>& focus;
  const Event<>& hover;
  const Event<DataObject&, std::int32_t&, std::int16_t, std::int16_t, float, float>& drop;
  const std::function<bool()>& isCurrent;
};

/// The state of a button. Where several apply, the last of them in this order is painted.
enum class ButtonState { Rest, Focus, Over, Down };

struct ButtonColours {
  Colour back;
  Colour text;
};

/// The widget of a button: it paints the button's properties and reports what the user does.
class ButtonWidget final : public QAbstractButton {
 public:
  /// `colours` returns the colours to paint in a state.
  ButtonWidget(QWidget* parent, const ButtonEvents& events,
               std::function<ButtonColours(ButtonState)> colours);

  /// Makes this button key `number` of the key block; screen readers call it "Key n" when it has no
  /// caption.
  void setKeyNumber(int number);
  bool isKey() const { return !keyName_.isEmpty(); }
  const QString& keyName() const { return keyName_; }
  void setCaption(const QString& text);
  void setTextFont(const QFont& font);
  /// Sets the scale at which the screen is laid out.
  void setScale(double scale) { scale_ = scale; }
  void setShowsFocus(bool shows) { showsFocus_ = shows; }

  /// The colour that fills the button at rest.
  QColor restColour() const;
  /// True for the key that the screen's commands act on.
  bool isCurrent() const { return events_.isCurrent && events_.isCurrent(); }
  /// Tells screen readers when `isCurrent` has changed since the last call.
  void announceCurrent();
  bool takesDoubleClick() const { return static_cast<bool>(events_.doubleClick); }
  void doubleClick();

 protected:
  void paintEvent(QPaintEvent* event) override;
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
  // Called for a press through the accessibility interface.
  void nextCheckState() override;

 private:
  ButtonState state() const;
  void raiseClick();
  void drawDown(bool down);
  void markDrop(bool on);

  ButtonEvents events_;
  std::function<ButtonColours(ButtonState)> colours_;
  CaptionLayout caption_;
  DoublePress doublePress_;
  QString keyName_;
  double scale_ = 1;
  bool showsFocus_ = true;
  bool pressed_ = false;    ///< the mouse or a key is pressed on the button
  bool drawnDown_ = false;  ///< pressed by a key, or by the mouse, which is over the button
  bool hovered_ = false;
  bool dropMark_ = false;
  bool announcedCurrent_ = false;
};

}  // namespace forms::qt
