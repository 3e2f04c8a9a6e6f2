#include "platform/forms/qt/EntryList.h"

#include <QCursor>
#include <QDrag>
#include <QEventLoop>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QTimer>
#include <utility>

#include "platform/forms/qt/EntryPainter.h"
#include "platform/forms/qt/Pictures.h"
#include "platform/forms/qt/Pixels.h"
#include "platform/forms/qt/Raise.h"
#include "platform/forms/qt/WideText.h"

namespace forms::qt {
namespace {

// Aligns the text with that of the boxes above.
constexpr int kTextInset = 4;

QString trimmed(std::u16string_view text) {
  return toQt(text).trimmed();
}

}  // namespace

struct EntryList::Drag {
  std::unique_ptr<QMimeData> text;
  Qt::DropActions actions;
  QEventLoop loop;
};

EntryList::EntryList(QWidget* parent, const EntryParts& parts, const EntryListEvents& events)
    : QListView(parent),
      parts_(parts),
      events_(events),
      model_(new EntryModel(this)),
      finger_(*this, {.drag = [this](const QMouseEvent& event) { press(event); },
                      .tap = [this](const QMouseEvent& event) { fingerTap(event); }}) {
  setModel(model_);
  auto* const painter = new EntryPainter(kTextInset, this);
  if (parts.id.offset < parts.name.offset)
    painter->setNumberColumn(static_cast<int>(parts.name.offset));
  setItemDelegate(painter);
  setUniformItemSizes(true);
  setTextElideMode(Qt::ElideNone);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollMode(ScrollPerPixel);
  setEditTriggers(NoEditTriggers);
  setSelectionMode(SingleSelection);
  setDragDropMode(NoDragDrop);
  setTabKeyNavigation(false);
}

void EntryList::select(int row) {
  model_->publish();
  if (row < 0) {
    selectionModel()->clear();
  } else {
    setCurrentIndex(model_->index(row));
  }
}

int EntryList::selected() const {
  const QModelIndexList rows = selectionModel()->selectedRows();
  return rows.isEmpty() ? -1 : rows.first().row();
}

QString EntryList::nameOf(int row) const {
  return trimmed(parts_.name.of(model_->entry(row)));
}

QString EntryList::idOf(int row) const {
  return trimmed(parts_.id.of(model_->entry(row)));
}

void EntryList::doubleClickRow(int row) {
  select(row);
  qt::raise(events_.doubleClick);
}

/// The part of a text that is visible in a row.
QString EntryList::visiblePart(const QString& text) const {
  const QFontMetrics metrics(font());
  qsizetype shown = 0;
  qsizetype cut = text.size();
  while (shown < cut) {
    const qsizetype middle = (shown + cut + 1) / 2;
    if (metrics.horizontalAdvance(text.left(middle)) <= viewport()->width())
      shown = middle;
    else
      cut = middle - 1;
  }
  return text.left(shown);
}

void EntryList::drag(std::unique_ptr<QMimeData> text, Qt::DropActions actions) {
  constexpr int kHeldStill = 500;  // milliseconds
  if (QGuiApplication::mouseButtons() == Qt::NoButton) return;
  Drag drag;
  drag.text = std::move(text);
  drag.actions = actions;
  const EndRegistration registration([&drag] {
    QDrag::cancel();
    drag.loop.quit();
  });
  drag_ = &drag;
  if (finger_.isDragging()) {
    beginDrag();
    return;
  }
  QTimer held;
  held.callOnTimeout(this, [this] { beginDrag(); });
  held.setSingleShot(true);
  held.start(kHeldStill);
  drag.loop.exec();
  drag_ = nullptr;
}

void EntryList::beginDrag() {
  Drag* drag = std::exchange(drag_, nullptr);
  if (drag == nullptr) return;
  auto* qDrag = new QDrag(this);  // which the toolkit deletes
  qDrag->setPixmap(dragPicture(visiblePart(drag->text->text()).simplified(), font(), palette(),
                               devicePixelRatioF()));
  qDrag->setMimeData(drag->text.release());
  const Qt::DropAction taken = qDrag->exec(drag->actions, Qt::MoveAction);
  droppedOutside_ = taken != Qt::IgnoreAction || !rect().contains(mapFromGlobal(QCursor::pos()));
  drag->loop.quit();
}

void EntryList::press(const QMouseEvent& event) {
  button_ = event.button();
  droppedOutside_ = false;
  model_->publish();
  const QModelIndex under = indexAt(event.position().toPoint());
  if (event.button() == Qt::LeftButton && under.isValid()) setCurrentIndex(under);
  qt::raise(events_.mouseDown, buttonCode(event.button()), shiftState(event.modifiers()),
            toTwips(event.position().x(), scale_), toTwips(event.position().y(), scale_));
}

/// The second press of a double press is a double click, unless it drags a row out of the list.
void EntryList::secondPress(const QMouseEvent& event) {
  press(event);
  if (!droppedOutside_) qt::raise(events_.doubleClick);
}

// Only two taps on one row are a double tap: the toolkit also counts a swipe as the first tap.
void EntryList::fingerTap(const QMouseEvent& event) {
  const QModelIndex under = indexAt(event.position().toPoint());
  const bool isDouble = doublePress_.completes(event) && under == tapped_;
  tapped_ = isDouble ? QModelIndex() : under;
  if (isDouble)
    secondPress(event);
  else
    press(event);
}

// While one button holds a drag, presses of the others are ignored.
void EntryList::mousePressEvent(QMouseEvent* event) {
  event->accept();
  if (drag_ != nullptr) return;
  if (Finger::isTouch(*event)) {
    finger_.press(*event);
    return;
  }
  if (event->button() == Qt::LeftButton) doublePress_.press(*event);
  press(*event);
}

void EntryList::mouseDoubleClickEvent(QMouseEvent* event) {
  event->accept();
  if (drag_ != nullptr) return;
  if (Finger::isTouch(*event))
    finger_.press(*event);
  else if (event->button() == Qt::LeftButton && doublePress_.completes(*event))
    secondPress(*event);
  else
    press(*event);
}

// Doesn't call the base class, which would select rows and start its own drag.
void EntryList::mouseMoveEvent(QMouseEvent* event) {
  event->accept();
  if (Finger::isTouch(*event))
    finger_.move(*event);
  else
    beginDrag();
}

void EntryList::mouseReleaseEvent(QMouseEvent* event) {
  event->accept();
  if (Finger::isTouch(*event)) {
    finger_.release(*event);
    return;
  }
  if (event->button() != button_) return;
  if (Drag* drag = std::exchange(drag_, nullptr)) drag->loop.quit();
}

// The frame shows the focus. `QListView` is skipped: it would also make the first entry current,
// without selecting it.
void EntryList::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);  // NOLINT(bugprone-parent-virtual-call)
  viewport()->update();
  update();
}

void EntryList::focusOutEvent(QFocusEvent* event) {
  QListView::focusOutEvent(event);
  update();
}

}  // namespace forms::qt
