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

/// The events of a list, raised through the dispatcher.
struct EntryListEvents {
  const Event<>& doubleClick;
  const Event<std::int16_t, std::int16_t, float, float>& mouseDown;
};

/// The widget of a list. Each physical press of the mouse raises one `mouseDown`, also the second
/// of a double press, and the handler may run a drag inside it. A finger scrolls by a vertical
/// move; its press raises `mouseDown` at a tap, or once it begins a drag.
class EntryList final : public QListView {
 public:
  EntryList(QWidget* parent, const EntryParts& parts, const EntryListEvents& events);

  EntryModel& entries() const { return *model_; }
  /// Selects a row, none for -1.
  void select(int row);
  /// -1: nothing selected.
  int selected() const;
  /// Sets the scale at which the screen is laid out.
  void setScale(double scale) { scale_ = scale; }

  /// Name and id of a row, without surrounding blanks.
  QString nameOf(int row) const;
  QString idOf(int row) const;
  /// Selects a row and raises `doubleClick`.
  void doubleClickRow(int row);

  /// Drags a text from the position of the pointer, which is held down; returns after the drop. The
  /// toolkit's drag grabs the pointer, and would take the second press of a double click with it.
  /// It therefore begins with the first move, or once the pointer has been held still for half a
  /// second. A drag that is released on the list has no effect. A finger's drag begins at once.
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
  void beginDrag();
  void press(const QMouseEvent& event);
  void secondPress(const QMouseEvent& event);
  void fingerTap(const QMouseEvent& event);
  QString visiblePart(const QString& text) const;

  EntryParts parts_;
  EntryListEvents events_;
  EntryModel* model_;
  DoublePress doublePress_;
  Finger finger_;
  QPersistentModelIndex tapped_;  ///< the row of the last tap
  double scale_ = 1;
  Drag* drag_ = nullptr;                   ///< a drag that waits for the pointer to move
  bool droppedOutside_ = false;            ///< the last press became a drag that left the list
  Qt::MouseButton button_ = Qt::NoButton;  ///< of the last press
};

}  // namespace forms::qt
