#pragma once

#include <QListView>
#include <QMimeData>
#include <QPersistentModelIndex>
#include <cstdint>
#include <memory>

#include "platform/forms/EntryParts.h"
#include "platform/forms/Event.h"
#include "platform/forms/qt/DoublePress.h"
#include "platform/forms/qt/EntryModel.h"
#include "platform/forms/qt/Finger.h"

namespace forms::qt {

/// What a list raises, through the dispatcher.
struct EntryListEvents {
  const Event<>& doubleClick;
  const Event<std::int16_t, std::int16_t, float, float>& mouseDown;
};

/// The widget of a list. One physical press of the mouse is one `mouseDown`, the second of a double
/// press too, and the handler may run a drag inside it. A finger scrolls by a vertical move; its
/// press counts at a tap, or once it begins a drag.
class EntryList final : public QListView {
 public:
  EntryList(QWidget* parent, const EntryParts& parts, const EntryListEvents& events);

  EntryModel& entries() const { return *model_; }
  /// Selects a row, none for -1.
  void select(int row);
  /// -1: nothing selected.
  int selected() const;
  /// How large the screen is laid out.
  void setScale(double scale) { scale_ = scale; }

  /// What a row is about, without blanks around.
  QString nameOf(int row) const;
  QString idOf(int row) const;
  /// Selects a row and raises `doubleClick`.
  void doubleClickRow(int row);

  /// Drags a text from where the pointer is held down; returns after the drop. The toolkit's own
  /// drag takes the pointer over, and the next press with it if that comes too soon. So it begins
  /// with the first move, or when the pointer is held still for a moment, and a double click is not
  /// cut in two: a drag that is let go where it began ends on the list, of which nothing comes. A
  /// finger's drag begins at once.
  void drag(std::unique_ptr<QMimeData> text, Qt::DropActions actions);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  struct Drag;
  void takeOff();
  void press(const QMouseEvent& event);
  void pressTwice(const QMouseEvent& event);
  void fingerTaps(const QMouseEvent& event);
  QString visiblePart(const QString& text) const;

  EntryParts parts_;
  EntryListEvents events_;
  EntryModel* model_;
  DoublePress doublePress_;
  Finger finger_;
  QPersistentModelIndex tapped_;  ///< by the last tap
  double scale_ = 1;
  Drag* drag_ = nullptr;                   ///< that waits for the pointer to move
  bool droppedOutside_ = false;            ///< the last press became a drag that left the list
  Qt::MouseButton button_ = Qt::NoButton;  ///< of the last press
};

}  // namespace forms::qt
