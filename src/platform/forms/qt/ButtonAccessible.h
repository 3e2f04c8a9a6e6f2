#pragma once

#include <QAccessibleWidget>

#include "platform/forms/qt/ButtonWidget.h"

namespace forms::qt {

/// A button as screen readers see it. A key is described by its index (from 0), its position (from
/// 1) and its colour at rest, is selected if it is the current one, and can be double-clicked.
class ButtonAccessible final : public QAccessibleWidget {
 public:
  explicit ButtonAccessible(ButtonWidget& button)
      : QAccessibleWidget(&button, QAccessible::Button) {}

  QString text(QAccessible::Text kind) const override;
  QAccessible::State state() const override;
  QStringList actionNames() const override;
  void doAction(const QString& action) override;

 private:
  ButtonWidget& button() const { return *static_cast<ButtonWidget*>(widget()); }
};

}  // namespace forms::qt
