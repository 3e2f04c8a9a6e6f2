#pragma once

#include <QApplication>
#include <QMouseEvent>
#include <optional>

namespace forms::qt {

/// Tells whether both presses of a double press were on one control. The toolkit reports the second
/// press only as a double press, also where the first was on a neighbour, or was dropped because a
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
