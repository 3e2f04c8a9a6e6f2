#include <QAbstractItemView>
#include <QComboBox>
#include <QWheelEvent>

#include "platform/forms/StandardControls.h"
#include "platform/forms/qt/EntryPainter.h"
#include "platform/forms/qt/Raise.h"
#include "platform/forms/qt/Text.h"
#include "platform/runtime/RunTimeError.h"

namespace forms {
namespace {

// Keeps the entries in line with the box's own text, and a row high enough for a finger.
constexpr int kTextInset = 5;
constexpr int kRowRoom = 8;

class DropDown : public QComboBox {
 public:
  DropDown(ComboBox& control, QWidget* parent) : QComboBox(parent) {
    setMaxVisibleItems(16);
    setItemDelegate(new qt::EntryPainter(kTextInset, kRowRoom, this));
    // Raised for every choice of the user's, of the chosen entry too, and never for a choice of
    // code's.
    connect(this, &QComboBox::activated, this, [&control] { qt::raise(control.Click); });
  }

 protected:
  void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

QComboBox* box(QWidget* widget) {
  return static_cast<QComboBox*>(widget);
}

}  // namespace

ComboBox::ComboBox(Container& container, const Design& design)
    : Control(container, design, 0, new DropDown(*this, clientOf(container))) {}

void ComboBox::AddItem(std::u16string_view entry) {
  // Adding to an empty box would choose the entry.
  const int chosen = ListIndex();
  box(widget())->addItem(qt::toQt(entry));
  box(widget())->setCurrentIndex(chosen);
}

int ComboBox::ListCount() const {
  return box(widget())->count();
}

int ComboBox::ListIndex() const {
  return box(widget())->currentIndex();
}

void ComboBox::ListIndex(int index) {
  if (index < -1 || index >= ListCount())
    throw runtime::RunTimeError(runtime::ErrorNumber::InvalidPropertyValue);
  box(widget())->setCurrentIndex(index);
  if (Click) Click();
}

std::u16string ComboBox::Text() const {
  return qt::fromQt(box(widget())->currentText());
}

}  // namespace forms
