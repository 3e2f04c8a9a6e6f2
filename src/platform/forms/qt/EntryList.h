#pragma once

#include <QListView>
#include <QMimeData>
#include <cstdint>
#include <memory>

#include "platform/forms/Event.h"
#include "platform/forms/qt/DoublePress.h"
#include "platform/forms/qt/EntryModel.h"

namespace forms::qt {

/// What a list raises, through the dispatcher.
struct EntryListEvents {
  const Event<>& doubleClick;
  const Event<std::int16_t, std::int16_t, float, float>& mouseDown;
};

/// The widget of a list. One physical press is one `mouseDown`, the second of a double press too,
/// and the handler may run a drag inside it.
class EntryList final : public QListView {
 public:
  EntryList(QWidget* parent, const EntryListEvents& events);

  EntryModel& entries() const { return *model_; }
  /// Selects a row, none for -1.
  void select(int row);
  /// -1: nothing selected.
  int selected() const;
  /// How large the screen is laid out.
  void setScale(double scale) { scale_ = scale; }

  /// Drags a text from where the pointer is held down; returns after the drop. The toolkit's own
  /// drag takes the pointer over, and the next press with it if that comes too soon. So it begins
  /// with the first move, or when the pointer is held still for a moment, and a double click is not
  /// cut in two: a drag that is let go where it began ends on the list, of which nothing comes.
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
  void pressed(const QMouseEvent& event);
  QString visiblePart(const QString& text) const;

  EntryListEvents events_;
  EntryModel* model_;
  DoublePress doublePress_;
  double scale_ = 1;
  Drag* drag_ = nullptr;                   ///< that waits for the pointer to move
  Qt::MouseButton button_ = Qt::NoButton;  ///< of the last press
};

}  // namespace forms::qt
