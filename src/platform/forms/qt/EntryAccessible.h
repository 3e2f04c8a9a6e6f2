#pragma once

#include <QAccessibleWidget>
#include <QHash>
#include <QPointer>

#include "platform/forms/qt/EntryList.h"

namespace forms::qt {

/// The accessible interface of a list. Creates that of a row when it is first requested.
class EntryListAccessible final : public QAccessibleWidget {
 public:
  explicit EntryListAccessible(EntryList& list) : QAccessibleWidget(&list, QAccessible::List) {}
  ~EntryListAccessible() override;

  int childCount() const override;
  QAccessibleInterface* child(int row) const override;
  QAccessibleInterface* childAt(int x, int y) const override;
  int indexOfChild(const QAccessibleInterface* child) const override;
  QAccessibleInterface* focusChild() const override;

 private:
  EntryList& list() const { return *static_cast<EntryList*>(widget()); }

  mutable QHash<int, QAccessible::Id> rows_;
};

/// A row of a list: its accessible name is the entry's name, its accessible description the entry's
/// id (see `EntryParts`). The press action selects the row and raises a double click.
class EntryAccessible final : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  EntryAccessible(EntryList& list, int row) : list_(&list), row_(row) {}

  int row() const { return row_; }

  bool isValid() const override;
  QObject* object() const override { return nullptr; }
  QAccessibleInterface* parent() const override;
  QAccessibleInterface* child(int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  QString text(QAccessible::Text kind) const override;
  void setText(QAccessible::Text, const QString&) override {}
  QRect rect() const override;
  QAccessible::Role role() const override { return QAccessible::ListItem; }
  QAccessible::State state() const override;
  void* interface_cast(QAccessible::InterfaceType type) override;

  QStringList actionNames() const override { return {pressAction()}; }
  void doAction(const QString& action) override;
  QStringList keyBindingsForAction(const QString&) const override { return {}; }

 private:
  QModelIndex index() const { return list_->model()->index(row_, 0); }

  QPointer<EntryList> list_;
  int row_;
};

}  // namespace forms::qt
