#include "platform/forms/ComboBox.h"

#include "platform/forms/qt/DropDown.h"
#include "platform/forms/qt/WideText.h"
#include "platform/runtime/RunTimeError.h"

namespace forms {
namespace {

QComboBox* box(QWidget* widget) {
  return static_cast<QComboBox*>(widget);
}

}  // namespace

ComboBox::ComboBox(Container& container, const Design& design)
    : Control(container, design, 0, new qt::DropDown(container.client(), [this] {
                if (Click) Click();
              })) {}

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
