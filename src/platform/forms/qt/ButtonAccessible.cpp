#include "platform/forms/qt/ButtonAccessible.h"

#include "platform/forms/qt/KeyBlock.h"
#include "platform/forms/qt/ScreenReaderAction.h"

namespace forms::qt {
namespace {

const QString& doubleClickAction() {
  static const QString name = QStringLiteral("Double click");
  return name;
}

}  // namespace

QString ButtonAccessible::text(QAccessible::Text kind) const {
  if (kind != QAccessible::Description || !button().isKey()) return QAccessibleWidget::text(kind);
  const KeyBlockPosition position = positionOf(button());
  return QStringLiteral("%1, row %2, column %3, colour %4")
      .arg(button().keyName())
      .arg(position.row)
      .arg(position.column)
      .arg(button().restColour().name().toUpper());
}

QAccessible::State ButtonAccessible::state() const {
  QAccessible::State now = QAccessibleWidget::state();
  now.selectable = button().isKey();
  now.selected = button().isCurrent();
  return now;
}

QStringList ButtonAccessible::actionNames() const {
  QStringList names{pressAction(), setFocusAction()};
  if (button().takesDoubleClick()) names.append(doubleClickAction());
  return names;
}

void ButtonAccessible::doAction(const QString& action) {
  if (action == pressAction())
    actLater(button(), [&button = button()] { button.click(); });
  else if (action == doubleClickAction() && button().takesDoubleClick())
    actLater(button(), [&button = button()] { button.doubleClick(); });
  else
    QAccessibleWidget::doAction(action);
}

}  // namespace forms::qt
