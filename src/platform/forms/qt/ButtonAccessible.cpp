#include "platform/forms/qt/ButtonAccessible.h"

#include "platform/forms/qt/KeyBlock.h"
#include "platform/forms/qt/ReaderAction.h"

namespace forms::qt {
namespace {

const QString& doubleClickAction() {
  static const QString name = QStringLiteral("Double click");
  return name;
}

}  // namespace

QString ButtonAccessible::text(QAccessible::Text kind) const {
  if (kind != QAccessible::Description || !face().isKey()) return QAccessibleWidget::text(kind);
  const GridPosition position = positionOf(face());
  return QStringLiteral("%1, row %2, column %3, colour %4")
      .arg(face().keyName())
      .arg(position.row)
      .arg(position.column)
      .arg(face().restColour().name().toUpper());
}

QAccessible::State ButtonAccessible::state() const {
  QAccessible::State now = QAccessibleWidget::state();
  now.selectable = face().isKey();
  now.selected = face().isCurrent();
  return now;
}

QStringList ButtonAccessible::actionNames() const {
  QStringList names{pressAction(), setFocusAction()};
  if (face().takesDoubleClick()) names.append(doubleClickAction());
  return names;
}

void ButtonAccessible::doAction(const QString& action) {
  if (action == pressAction())
    actLater(face(), [&face = face()] { face.click(); });
  else if (action == doubleClickAction() && face().takesDoubleClick())
    actLater(face(), [&face = face()] { face.doubleClick(); });
  else
    QAccessibleWidget::doAction(action);
}

}  // namespace forms::qt
