#include "platform/forms/qt/DropDown.h"

#include <QWheelEvent>
#include <utility>

#include "platform/forms/qt/EntryPainter.h"
#include "platform/forms/qt/Raise.h"

namespace forms::qt {
namespace {

// Keeps the entries in line with the box's own text, and a row high enough for a finger.
constexpr int kTextInset = 5;
constexpr int kRowRoom = 8;

}  // namespace

DropDown::DropDown(QWidget* parent, std::function<void()> chosen) : QComboBox(parent) {
  setMaxVisibleItems(16);
  setItemDelegate(new EntryPainter(kTextInset, kRowRoom, this));
  connect(this, &QComboBox::activated, this,
          [chosen = std::move(chosen)] { qt::dispatch(chosen); });
}

void DropDown::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace forms::qt
