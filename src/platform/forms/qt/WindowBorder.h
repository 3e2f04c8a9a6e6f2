#pragma once

#include <QWidget>

namespace forms::qt {

/// A border drawn over the widgets of a window without a frame. It ignores input.
class WindowBorder final : public QWidget {
 public:
  /// Creates the border and shows it.
  explicit WindowBorder(QWidget* window);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace forms::qt
