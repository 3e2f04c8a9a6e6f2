#pragma once

#include <QObject>

namespace forms::qt {

/// Shows a modal window again when it is minimised, as an event filter of the application. While it
/// is hidden the user could do nothing, since it blocks all other windows.
class ModalRestorer : public QObject {
 public:
  explicit ModalRestorer(QObject* application);
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace forms::qt
