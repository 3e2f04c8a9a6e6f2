#include "platform/forms/qt/DropDown.h"

#include <QWheelEvent>
#include <utility>

#include "platform/forms/qt/EntryPainter.h"
#include "platform/forms/qt/Raise.h"

namespace forms::qt {
namespace {

// Aligns the entries with the box's own text.
constexpr int kTextInset = 5;

}  // namespace

DropDown::DropDown(QWidget* parent, std::function<void()> chosen) : QComboBox(parent) {
  setMaxVisibleItems(16);
  setItemDelegate(new EntryPainter(kTextInset, this));
  connect(this, &QComboBox::activated, this,
          [chosen = std::move(chosen)] { qt::dispatch(chosen); });
}

void DropDown::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace forms::qt
