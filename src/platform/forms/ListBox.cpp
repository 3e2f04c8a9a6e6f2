#include "platform/forms/ListBox.h"

#include <QDrag>
#include <QEventLoop>
#include <QGuiApplication>
#include <QListView>
#include <QMouseEvent>
#include <QTimer>
#include <memory>
#include <utility>

#include "platform/forms/qt/DoublePress.h"
#include "platform/forms/qt/DragData.h"
#include "platform/forms/qt/EntryModel.h"
#include "platform/forms/qt/EntryPainter.h"
#include "platform/forms/qt/Measures.h"
#include "platform/forms/qt/Pictures.h"
#include "platform/forms/qt/Raise.h"
#include "platform/forms/qt/Text.h"
#include "platform/runtime/RunTimeError.h"

namespace forms {
namespace {

// Keeps the text in line with that of the boxes above, and a row high enough for a finger.
constexpr int kTextInset = 4;
constexpr int kRowRoom = 6;

/// The list's own mouse handling: one press of the hand is one `MouseDown`, the second of a double
/// press too, and the handler may run a drag inside it.
class Entries : public QListView {
 public:
  Entries(ListBox& control, QWidget* parent)
      : QListView(parent), control_(control), model_(new qt::EntryModel(this)) {
    setModel(model_);
    setItemDelegate(new qt::EntryPainter(kTextInset, kRowRoom, this));
    setUniformItemSizes(true);
    setTextElideMode(Qt::ElideNone);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setDragDropMode(NoDragDrop);
    setTabKeyNavigation(false);
  }

  qt::EntryModel& entries() const { return *model_; }

  void select(int row) {
    model_->publish();
    if (row < 0) {
      selectionModel()->clear();
    } else {
      setCurrentIndex(model_->index(row));
    }
  }

  int selected() const {
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
  }

  /// The beginning of a text, as far as a row shows it.
  QString visiblePart(const QString& text) const {
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

  /// Drags a text from where the pointer is held down; returns after the drop. The toolkit's own
  /// drag takes the pointer over, and the next press with it if that comes too soon. So it begins
  /// with the first move, or when the pointer is held still for a moment, and a double click stays
  /// whole: a drag that is let go where it began ends on the list, of which nothing comes.
  void drag(std::unique_ptr<QMimeData> text, Qt::DropActions actions) {
    constexpr int kHeldStill = 500;  // milliseconds
    if (QGuiApplication::mouseButtons() == Qt::NoButton) return;
    Drag drag;
    drag.text = std::move(text);
    drag.actions = actions;
    const qt::EndWatch watch([&drag] {
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

  double scale = 1;

 protected:
  // While one button holds a drag, another one's press is nobody's.
  void mousePressEvent(QMouseEvent* event) override {
    event->accept();
    if (drag_ != nullptr) return;
    if (event->button() == Qt::LeftButton) doublePress_.press(*event);
    pressed(*event);
  }

  void mouseDoubleClickEvent(QMouseEvent* event) override {
    event->accept();
    if (drag_ != nullptr) return;
    const bool isDouble = event->button() == Qt::LeftButton && doublePress_.completes(*event);
    pressed(*event);
    if (isDouble) qt::raise(control_.DblClick);
  }

  // The frame shows the focus. The toolkit's list would also make the first entry its current one,
  // without selecting it.
  void focusInEvent(QFocusEvent* event) override {
    QAbstractScrollArea::focusInEvent(event);  // NOLINT(bugprone-parent-virtual-call)
    viewport()->update();
    update();
  }
  void focusOutEvent(QFocusEvent* event) override {
    QListView::focusOutEvent(event);
    update();
  }

  // The toolkit's list would select and drag by itself.
  void mouseMoveEvent(QMouseEvent* event) override {
    event->accept();
    takeOff();
  }
  void mouseReleaseEvent(QMouseEvent* event) override {
    event->accept();
    if (event->button() != button_) return;
    if (Drag* drag = std::exchange(drag_, nullptr)) drag->loop.quit();
  }

 private:
  /// A drag that waits for the pointer to move.
  struct Drag {
    std::unique_ptr<QMimeData> text;
    Qt::DropActions actions;
    QEventLoop loop;
  };

  void takeOff() {
    Drag* drag = std::exchange(drag_, nullptr);
    if (drag == nullptr) return;
    auto* toolkits = new QDrag(this);  // which the toolkit deletes
    toolkits->setPixmap(qt::dragPicture(visiblePart(drag->text->text()).simplified(), font(),
                                        palette(), devicePixelRatioF()));
    toolkits->setMimeData(drag->text.release());
    toolkits->exec(drag->actions, Qt::MoveAction);
    drag->loop.quit();
  }

  void pressed(const QMouseEvent& event) {
    button_ = event.button();
    model_->publish();
    const QModelIndex under = indexAt(event.position().toPoint());
    if (event.button() == Qt::LeftButton && under.isValid()) setCurrentIndex(under);
    qt::raise(control_.MouseDown, qt::buttonCode(event.button()), qt::shiftState(event.modifiers()),
              qt::toTwips(event.position().x(), scale), qt::toTwips(event.position().y(), scale));
  }

  ListBox& control_;
  qt::EntryModel* model_;
  qt::DoublePress doublePress_;
  Drag* drag_ = nullptr;
  Qt::MouseButton button_ = Qt::NoButton;  ///< of the last press
};

Entries& entriesOf(QWidget* widget) {
  return *static_cast<Entries*>(widget);
}

Qt::DropActions toQt(std::int32_t effects) {
  Qt::DropActions actions;
  if ((effects & kDropMove) != 0) actions |= Qt::MoveAction;
  if ((effects & kDropCopy) != 0) actions |= Qt::CopyAction;
  return actions;
}

}  // namespace

ListBox::ListBox(Container& container, const Design& design)
    : Control(container, design, 0, new Entries(*this, clientOf(container))) {}

void ListBox::rescaled() {
  Control::rescaled();
  entriesOf(widget()).scale = scale();
}

void ListBox::Clear() {
  entriesOf(widget()).entries().clear();
}

void ListBox::AddItem(std::u16string_view entry) {
  entriesOf(widget()).entries().add(entry);
}

int ListBox::ListCount() const {
  return entriesOf(widget()).entries().count();
}

int ListBox::ListIndex() const {
  return entriesOf(widget()).selected();
}

void ListBox::ListIndex(int index) {
  if (index < -1 || index >= ListCount())
    throw runtime::RunTimeError(runtime::ErrorNumber::InvalidPropertyValue);
  entriesOf(widget()).select(index);
}

std::u16string ListBox::Text() const {
  return List(ListIndex());
}

std::u16string ListBox::List(int index) const {
  if (index < 0 || index >= ListCount()) return {};
  return std::u16string(entriesOf(widget()).entries().entry(index));
}

void ListBox::OLEDrag() {
  auto mime = std::make_unique<QMimeData>();
  std::int32_t effects = kDropCopy | kDropMove;
  {
    qt::OutgoingData data(*mime);
    if (OLEStartDrag) OLEStartDrag(data, effects);
  }
  entriesOf(widget()).drag(std::move(mime), toQt(effects));
  process::unwindIfEnded();
}

}  // namespace forms
