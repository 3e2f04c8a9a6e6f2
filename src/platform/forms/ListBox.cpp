#include "platform/forms/ListBox.h"

#include <memory>

#include "platform/forms/qt/DragData.h"
#include "platform/forms/qt/EntryList.h"
#include "platform/process/Process.h"
#include "platform/runtime/RunTimeError.h"

namespace forms {
namespace {

qt::EntryList& listOf(QWidget* widget) {
  return *static_cast<qt::EntryList*>(widget);
}

Qt::DropActions toQt(std::int32_t effects) {
  Qt::DropActions actions;
  if ((effects & kDropMove) != 0) actions |= Qt::MoveAction;
  if ((effects & kDropCopy) != 0) actions |= Qt::CopyAction;
  return actions;
}

}  // namespace

ListBox::ListBox(Container& container, const Design& design, const EntryParts& parts)
    : Control(container, design, 0,
              new qt::EntryList(container.client(), parts,
                                {.doubleClick = DblClick, .mouseDown = MouseDown})) {}

void ListBox::rescaled() {
  Control::rescaled();
  listOf(widget()).setScale(scale());
}

void ListBox::Clear() {
  listOf(widget()).entries().clear();
}

void ListBox::AddItem(std::u16string_view entry) {
  listOf(widget()).entries().add(entry);
}

int ListBox::ListCount() const {
  return listOf(widget()).entries().count();
}

int ListBox::ListIndex() const {
  return listOf(widget()).selected();
}

void ListBox::ListIndex(int index) {
  if (index < -1 || index >= ListCount())
    throw runtime::RunTimeError(runtime::ErrorNumber::InvalidPropertyValue);
  listOf(widget()).select(index);
}

std::u16string ListBox::Text() const {
  return List(ListIndex());
}

std::u16string ListBox::List(int index) const {
  if (index < 0 || index >= ListCount()) return {};
  return std::u16string(listOf(widget()).entries().entry(index));
}

void ListBox::OLEDrag() {
  auto mime = std::make_unique<QMimeData>();
  std::int32_t effects = kDropCopy | kDropMove;
  {
    qt::OutgoingData data(*mime);
    if (OLEStartDrag) OLEStartDrag(data, effects);
  }
  listOf(widget()).drag(std::move(mime), toQt(effects));
  process::unwindIfEnding();
}

}  // namespace forms
