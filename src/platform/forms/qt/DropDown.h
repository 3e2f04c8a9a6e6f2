#pragma once

#include <QComboBox>
#include <functional>

namespace forms::qt {

/// A drop-down list. A turn of the wheel over the closed list changes nothing.
class DropDown : public QComboBox {
 public:
  /// `chosen` is called, through the dispatcher, whenever the user selects an entry, even the one
  /// already selected, and never when code does.
  DropDown(QWidget* parent, std::function<void()> chosen);

 protected:
  void wheelEvent(QWheelEvent* event) override;
};

}  // namespace forms::qt
