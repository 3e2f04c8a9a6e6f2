// What a screen reader calls the controls that have no caption of their own.

#include <cstdlib>

#include "platform/forms/ComboBox.h"
#include "platform/forms/Label.h"
#include "platform/forms/ListBox.h"
#include "platform/forms/MyCommandButton.h"
#include "platform/forms/PictureBox.h"
#include "platform/forms/TextBox.h"
#include "platform/forms/qt/Text.h"
#include "platform/forms/qt/Window.h"

namespace forms {
namespace {

/// How far a label's left edge may lie from that of the box below it, and its top above the box's,
/// in twips.
constexpr int kAlignment = 300;
constexpr int kReach = 600;

bool standsAbove(const Control& label, const Control& box) {
  const int rise = box.Top().value - label.Top().value;
  return std::abs(label.Left().value - box.Left().value) <= kAlignment && rise > 0 &&
         rise <= kReach;
}

}  // namespace

/// A box or list takes the name of the label above it; else it is named after what it holds, like
/// an area that holds other controls. A window without a title bar is named like its one area.
void Form::Window::nameControls() {
  for (Control* control : controls) {
    if (dynamic_cast<PictureBox*>(control) != nullptr) nameArea(*control);
    const bool isList = dynamic_cast<ListBox*>(control) != nullptr;
    const bool isBox =
        isList || dynamic_cast<TextBox*>(control) || dynamic_cast<ComboBox*>(control);
    if (!isBox) continue;
    QString name = isList ? QStringLiteral("Items") : QString();
    for (const Control* other : controls) {
      const auto* label = dynamic_cast<const Label*>(other);
      if (label != nullptr && &other->container_ == &control->container_ &&
          standsAbove(*other, *control))
        name = qt::toQt(label->Caption());
    }
    control->widget_->setAccessibleName(name);
  }
}

void Form::Window::nameArea(Control& area) {
  QString name;
  for (const Control* control : controls) {
    if (control->widget_->parentWidget() != area.widget_ || !control->visible_) continue;
    const auto* button = dynamic_cast<const MyCommandButton::MyButton*>(control);
    const auto* label = dynamic_cast<const Label*>(control);
    if (button != nullptr)
      name = button->isKey() ? QStringLiteral("Keys") : QStringLiteral("Commands");
    else if (label != nullptr)
      name = qt::toQt(label->Caption());
  }
  area.widget_->setAccessibleName(name);
  if (design.border == BorderStyle::None) setAccessibleName(name);
}

}  // namespace forms
