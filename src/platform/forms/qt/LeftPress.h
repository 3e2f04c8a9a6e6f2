#pragma once

#include <QMouseEvent>
#include <utility>

namespace forms::qt {

/// A press of the left button on one widget, until its release.
class LeftPress {
 public:
  void begin(const QMouseEvent& press) { held_ = press.button() == Qt::LeftButton; }
  /// True for the release of a press that began here.
  bool ends(const QMouseEvent& release) {
    return release.button() == Qt::LeftButton && std::exchange(held_, false);
  }

 private:
  bool held_ = false;
};

}  // namespace forms::qt
