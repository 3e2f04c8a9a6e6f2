#include "platform/forms/qt/EntryList.h"

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

namespace forms::qt {
namespace {

// Keeps the text in line with that of the boxes above, and a row high enough for a finger.
constexpr int kTextInset = 4;
constexpr int kRowRoom = 6;

}  // namespace

struct EntryList::Drag {
  std::unique_ptr<QMimeData> text;
  Qt::DropActions actions;
  QEventLoop loop;
};

EntryList::EntryList(QWidget* parent, const EntryListEvents& events)
    : QListView(parent), events_(events), model_(new EntryModel(this)) {
  setModel(model_);
  setItemDelegate(new EntryPainter(kTextInset, kRowRoom, this));
  setUniformItemSizes(true);
  setTextElideMode(Qt::ElideNone);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
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

/// The beginning of a text, as far as a row shows it.
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
  const EndWatch watch([&drag] {
    QDrag::cancel();
    drag.loop.quit();
  });
  QTimer held;
  held.callOnTimeout(this, [this] { takeOff(); });
  held.setSingleShot(true);
  held.start(kHeldStill);
  drag_ = &drag;
  drag.loop.exec();
  drag_ = nullptr;
}

void EntryList::takeOff() {
  Drag* drag = std::exchange(drag_, nullptr);
  if (drag == nullptr) return;
  auto* toolkits = new QDrag(this);  // which the toolkit deletes
  toolkits->setPixmap(dragPicture(visiblePart(drag->text->text()).simplified(), font(), palette(),
                                  devicePixelRatioF()));
  toolkits->setMimeData(drag->text.release());
  toolkits->exec(drag->actions, Qt::MoveAction);
  drag->loop.quit();
}

void EntryList::pressed(const QMouseEvent& event) {
  button_ = event.button();
  model_->publish();
  const QModelIndex under = indexAt(event.position().toPoint());
  if (event.button() == Qt::LeftButton && under.isValid()) setCurrentIndex(under);
  qt::raise(events_.mouseDown, buttonCode(event.button()), shiftState(event.modifiers()),
            toTwips(event.position().x(), scale_), toTwips(event.position().y(), scale_));
}

// While one button holds a drag, presses of the others are ignored.
void EntryList::mousePressEvent(QMouseEvent* event) {
  event->accept();
  if (drag_ != nullptr) return;
  if (event->button() == Qt::LeftButton) doublePress_.press(*event);
  pressed(*event);
}

void EntryList::mouseDoubleClickEvent(QMouseEvent* event) {
  event->accept();
  if (drag_ != nullptr) return;
  const bool isDouble = event->button() == Qt::LeftButton && doublePress_.completes(*event);
  pressed(*event);
  if (isDouble) qt::raise(events_.doubleClick);
}

// The toolkit's list would select and drag by itself.
void EntryList::mouseMoveEvent(QMouseEvent* event) {
  event->accept();
  takeOff();
}

void EntryList::mouseReleaseEvent(QMouseEvent* event) {
  event->accept();
  if (event->button() != button_) return;
  if (Drag* drag = std::exchange(drag_, nullptr)) drag->loop.quit();
}

// The frame shows the focus. The toolkit's list would also make the first entry its current one,
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
