// What a screen reader calls the controls that have no caption of their own.

#include <cstdlib>

#include "platform/forms/MyCommandButton.h"
#include "platform/forms/StandardControls.h"
#include "platform/forms/qt/Text.h"
#include "platform/forms/qt/Window.h"

namespace forms {
namespace {

/// How far a label's left edge may lie from that of the box below it, and its top above the box's.
constexpr int kAlignment = 300;
constexpr int kReach = 600;

bool standsAbove(const Control& label, const Control& box) {
  const int rise = box.Top().value - label.Top().value;
  return std::abs(label.Left().value - box.Left().value) <= kAlignment && rise > 0 &&
         rise <= kReach;
}

}  // namespace

/// A box or list takes the name of the label above it, else what it holds.
void Form::Window::nameControls() {
  for (Control* box : controls) {
    const bool isList = dynamic_cast<ListBox*>(box) != nullptr;
    const bool isBox = isList || dynamic_cast<TextBox*>(box) || dynamic_cast<ComboBox*>(box);
    if (!isBox) continue;
    QString name = isList ? QStringLiteral("Items") : QString();
    for (const Control* other : controls) {
      const auto* label = dynamic_cast<const Label*>(other);
      if (label != nullptr && &other->container_ == &box->container_ && standsAbove(*other, *box))
        name = qt::toQt(label->Caption());
    }
    box->widget_->setAccessibleName(name);
  }
  for (Control* control : controls) {
    const auto* button = dynamic_cast<const MyCommandButton::MyButton*>(control);
    if (button != nullptr && button->isKey() && control->widget_->parentWidget() != this)
      control->widget_->parentWidget()->setAccessibleName(QStringLiteral("Keys"));
  }
}

}  // namespace forms
