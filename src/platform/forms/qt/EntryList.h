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

/// The widget of a list. Each press of a mouse button raises one `mouseDown`, including the second
/// of a double press; its handler may run a drag. A vertical move of a finger scrolls; a tap, or a
/// move that begins a drag, raises `mouseDown`.
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

  /// Drags a text while a mouse button is held; returns after the drop. The toolkit's drag grabs
  /// the pointer and would swallow the second press of a double click, so it starts only with the
  /// first move or after half a second without one. A finger's drag starts at once. Releasing on
  /// the list has no effect.
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
  Drag* drag_ = nullptr;         ///< a drag that waits for the pointer to move
  bool droppedOutside_ = false;  ///< the last press began a drag that ended outside the list
  Qt::MouseButton button_ = Qt::NoButton;  ///< of the last press
};

}  // namespace forms::qt
