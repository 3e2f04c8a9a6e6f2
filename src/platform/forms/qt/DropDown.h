#pragma once

#include <QComboBox>
#include <functional>

namespace forms::qt {

/// A drop-down list. A turn of the wheel over the closed list changes nothing.
class DropDown : public QComboBox {
 public:
  /// `chosen` is called, through the dispatcher, for every choice by the user, also of the entry
  /// that is chosen already, and never for a choice by code.
  DropDown(QWidget* parent, std::function<void()> chosen);

 protected:
  void wheelEvent(QWheelEvent* event) override;
};

}  // namespace forms::qt
