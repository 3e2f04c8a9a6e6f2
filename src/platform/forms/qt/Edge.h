#pragma once

#include <QWidget>

namespace forms::qt {

/// A line around a window that nobody frames. It lies on top of all and takes no input.
class Edge final : public QWidget {
 public:
  /// Shown at once.
  explicit Edge(QWidget* window);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace forms::qt
