#include "platform/forms/qt/WindowNames.h"

#include <QComboBox>
#include <QLineEdit>
#include <cstdlib>

#include "platform/forms/qt/ButtonWidget.h"
#include "platform/forms/qt/EntryList.h"
#include "platform/forms/qt/LabelText.h"
#include "platform/forms/qt/Pixels.h"
#include "platform/forms/qt/Surface.h"

namespace forms::qt {
namespace {

/// The greatest distance of a label's left edge from that of the box below it, and of its top above
/// the box's top.
constexpr Twips kAlignment = 300;
constexpr Twips kReach = 600;

bool isAbove(const QWidget& label, const QWidget& box, double scale) {
  const int rise = box.y() - label.y();
  return std::abs(label.x() - box.x()) <= toPixels(kAlignment, scale) && rise > 0 &&
         rise <= toPixels(kReach, scale);
}

/// The direct child widgets of another one, in the order of their creation.
QList<QWidget*> widgetsIn(const QWidget& area) {
  return area.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
}

QString labelAbove(const QWidget& box, double scale) {
  QString name;
  for (const QWidget* other : widgetsIn(*box.parentWidget())) {
    const auto* label = dynamic_cast<const LabelText*>(other);
    if (label != nullptr && isAbove(*label, box, scale)) name = label->text();
  }
  return name;
}

QString nameOfArea(const QWidget& area) {
  QString name;
  for (const QWidget* part : widgetsIn(area)) {
    if (part->isHidden()) continue;
    if (const auto* key = dynamic_cast<const ButtonWidget*>(part))
      name = key->isKey() ? QStringLiteral("Keys") : QStringLiteral("Commands");
    else if (const auto* label = dynamic_cast<const LabelText*>(part))
      name = label->text();
  }
  return name;
}

}  // namespace

void nameWidgets(QWidget& window, double scale) {
  for (QWidget* widget : window.findChildren<QWidget*>()) {
    if (dynamic_cast<Surface*>(widget) != nullptr) {
      const QString name = nameOfArea(*widget);
      widget->setAccessibleName(name);
      if (window.windowTitle().isEmpty()) window.setAccessibleName(name);
      continue;
    }
    const bool isList = dynamic_cast<EntryList*>(widget) != nullptr;
    const bool isBox = isList || dynamic_cast<QLineEdit*>(widget) != nullptr ||
                       dynamic_cast<QComboBox*>(widget) != nullptr;
    if (!isBox) continue;
    const QString label = labelAbove(*widget, scale);
    widget->setAccessibleName(label.isEmpty() && isList ? QStringLiteral("Items") : label);
  }
}

}  // namespace forms::qt
