#include "platform/forms/CheckBox.h"

#include "platform/forms/qt/CheckBoxWidget.h"
#include "platform/runtime/RunTimeError.h"

namespace forms {
namespace {

constexpr std::int16_t kGreyed = 2;

}  // namespace

CheckBox::CheckBox(Container& container, const Design& design)
    : Control(container, design, 0, new qt::CheckBoxWidget(container.client(), design, [this] {
                Value(static_cast<std::int16_t>(value_ == 0 ? 1 : 0));
              })) {}

void CheckBox::Value(std::int16_t value) {
  if (value < 0 || value > kGreyed)
    throw runtime::RunTimeError(runtime::ErrorNumber::InvalidPropertyValue);
  if (value == value_) return;
  value_ = value;
  static_cast<QCheckBox*>(widget())->setCheckState(value == kGreyed ? Qt::PartiallyChecked
                                                   : value == 1     ? Qt::Checked
                                                                    : Qt::Unchecked);
  widget()->repaint();  // at once, since the handler may take long
  if (Click) Click();
}

}  // namespace forms
