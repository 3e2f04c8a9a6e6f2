#pragma once

#include <QLabel>

namespace forms::qt {

/// The picture of a tick.
class TickPicture : public QLabel {
 public:
  explicit TickPicture(QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace forms::qt
