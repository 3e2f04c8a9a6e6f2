#include "platform/forms/qt/EntryAccessible.h"

#include "platform/forms/qt/ScreenReaderAction.h"

namespace forms::qt {

EntryListAccessible::~EntryListAccessible() {
  for (const QAccessible::Id row : rows_) QAccessible::deleteAccessibleInterface(row);
}

int EntryListAccessible::childCount() const {
  return list().model()->rowCount();
}

QAccessibleInterface* EntryListAccessible::child(int row) const {
  if (row < 0 || row >= childCount()) return nullptr;
  auto known = rows_.find(row);
  if (known == rows_.end()) {
    auto* accessible = new EntryAccessible(list(), row);
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): the toolkit owns what is registered
    known = rows_.insert(row, QAccessible::registerAccessibleInterface(accessible));
  }
  return QAccessible::accessibleInterface(*known);
}

QAccessibleInterface* EntryListAccessible::childAt(int x, int y) const {
  return child(list().indexAt(list().viewport()->mapFromGlobal(QPoint(x, y))).row());
}

int EntryListAccessible::indexOfChild(const QAccessibleInterface* child) const {
  const auto* row = dynamic_cast<const EntryAccessible*>(child);
  return row != nullptr ? row->row() : -1;
}

QAccessibleInterface* EntryListAccessible::focusChild() const {
  return list().hasFocus() ? child(list().currentIndex().row()) : nullptr;
}

bool EntryAccessible::isValid() const {
  return !list_.isNull() && index().isValid();
}

QAccessibleInterface* EntryAccessible::parent() const {
  return QAccessible::queryAccessibleInterface(list_);
}

QString EntryAccessible::text(QAccessible::Text kind) const {
  if (!isValid()) return {};
  if (kind == QAccessible::Name) return list_->nameOf(row_);
  if (kind == QAccessible::Description) return list_->idOf(row_);
  return {};
}

QRect EntryAccessible::rect() const {
  if (!isValid()) return {};
  const QRect row = list_->visualRect(index());
  return {list_->viewport()->mapToGlobal(row.topLeft()), row.size()};
}

QAccessible::State EntryAccessible::state() const {
  QAccessible::State now;
  if (!isValid()) {
    now.invalid = true;
    return now;
  }
  now.selectable = true;
  now.selected = list_->selected() == row_;
  now.focusable = true;
  now.focused = list_->hasFocus() && list_->currentIndex().row() == row_;
  const bool seen = list_->viewport()->rect().intersects(list_->visualRect(index()));
  now.invisible = !list_->isVisible();
  now.offscreen = !seen;
  return now;
}

void* EntryAccessible::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::ActionInterface) return static_cast<QAccessibleActionInterface*>(this);
  return nullptr;
}

void EntryAccessible::doAction(const QString& action) {
  if (action != pressAction() || !isValid()) return;
  actLater(*list_, [list = list_.data(), row = row_] { list->doubleClickRow(row); });
}

}  // namespace forms::qt
