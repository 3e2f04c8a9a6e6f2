#include "platform/forms/qt/AccessibleFactory.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QComboBox>

#include "platform/forms/qt/ButtonAccessible.h"
#include "platform/forms/qt/EntryAccessible.h"

namespace forms::qt {
namespace {

class WindowAccessible : public QAccessibleWidget {
 public:
  explicit WindowAccessible(QWidget* window) : QAccessibleWidget(window) {}
  QAccessible::Role role() const override {
    return widget()->isModal() ? QAccessible::Dialog : QAccessible::Window;
  }
};

/// A drop-down list as screen readers see it. The toolkit would use the chosen entry as its name;
/// here it keeps its own name, and the chosen entry is its value and description.
class DropDownAccessible : public QAccessibleWidget {
 public:
  explicit DropDownAccessible(QComboBox* box) : QAccessibleWidget(box, QAccessible::ComboBox) {}

  QString text(QAccessible::Text kind) const override {
    const bool chosen = kind == QAccessible::Value || kind == QAccessible::Description;
    return chosen ? box()->currentText() : QAccessibleWidget::text(kind);
  }

  int childCount() const override { return 1; }
  QAccessibleInterface* child(int index) const override {
    return index == 0 ? QAccessible::queryAccessibleInterface(box()->view()) : nullptr;
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return child->object() == box()->view() ? 0 : -1;
  }
  QAccessibleInterface* childAt(int x, int y) const override {
    const QAbstractItemView* view = box()->view();
    const bool inside =
        view->isVisible() && view->rect().contains(view->mapFromGlobal(QPoint(x, y)));
    return inside ? child(0) : nullptr;
  }

  QAccessible::State state() const override {
    QAccessible::State now = QAccessibleWidget::state();
    now.expandable = true;
    now.expanded = box()->view()->isVisible();
    return now;
  }
  QStringList actionNames() const override { return {showMenuAction(), pressAction()}; }
  void doAction(const QString& action) override {
    if (action != showMenuAction() && action != pressAction()) return;
    if (box()->view()->isVisible())
      box()->hidePopup();
    else
      box()->showPopup();
  }

 private:
  QComboBox* box() const { return static_cast<QComboBox*>(widget()); }
};

QAccessibleInterface* makeAccessible(const QString&, QObject* object) {
  if (auto* button = dynamic_cast<ButtonWidget*>(object)) return new ButtonAccessible(*button);
  if (auto* list = dynamic_cast<EntryList*>(object)) return new EntryListAccessible(*list);
  if (auto* box = qobject_cast<QComboBox*>(object); box != nullptr && !box->isEditable())
    return new DropDownAccessible(box);
  auto* widget = qobject_cast<QWidget*>(object);
  // A screen's `Window` has no meta-object of its own, so its class name is "QWidget".
  const bool isPlain = QLatin1String(object->metaObject()->className()) == QLatin1String("QWidget");
  if (widget != nullptr && widget->isWindow() && isPlain) return new WindowAccessible(widget);
  return nullptr;
}

}  // namespace

void installAccessibleFactory() {
  QAccessible::installFactory(makeAccessible);
}

}  // namespace forms::qt
