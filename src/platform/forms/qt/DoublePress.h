#pragma once

#include <QApplication>
#include <QMouseEvent>
#include <optional>

namespace forms::qt {

/// Tells whether a double press was made on one control alone. For the second press the toolkit
/// sends a double press only; and it takes a press on a neighbour, or one that was dropped because
/// a modal screen was up, for the first of the two.
class DoublePress {
 public:
  void press(const QMouseEvent& event) { last_ = event.timestamp(); }

  /// For the toolkit's double press: true when the control had the first press as well.
  bool completes(const QMouseEvent& event) {
    const auto interval = static_cast<quint64>(QApplication::doubleClickInterval());
    const bool whole = last_.has_value() && event.timestamp() - *last_ <= interval;
    press(event);
    return whole;
  }

 private:
  std::optional<quint64> last_;  ///< when the last press came, in milliseconds
};

}  // namespace forms::qt
