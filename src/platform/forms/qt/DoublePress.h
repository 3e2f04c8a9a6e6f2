#pragma once

#include <QApplication>
#include <QMouseEvent>
#include <optional>

namespace forms::qt {

/// Determines whether both presses of a double press hit the same control. The toolkit reports the
/// second press as a double press even when the first hit another control or was dropped because a
/// modal screen was shown.
class DoublePress {
 public:
  void press(const QMouseEvent& event) { last_ = event.timestamp(); }

  /// Called for the toolkit's double press: true when the control had the first press as well.
  bool completes(const QMouseEvent& event) {
    const auto interval = static_cast<quint64>(QApplication::doubleClickInterval());
    const bool hadFirst = last_.has_value() && event.timestamp() - *last_ <= interval;
    press(event);
    return hadFirst;
  }

 private:
  std::optional<quint64> last_;  ///< time of the last press, in milliseconds
};

}  // namespace forms::qt
