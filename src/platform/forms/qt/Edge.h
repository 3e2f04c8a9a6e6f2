#pragma once

#include <QWidget>

namespace forms::qt {

/// A line around a window that has no frame, on top of all widgets. It takes no input.
class Edge final : public QWidget {
 public:
  /// Shown at once.
  explicit Edge(QWidget* window);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace forms::qt
