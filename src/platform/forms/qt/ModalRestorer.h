#pragma once

#include <QObject>

namespace forms::qt {

/// An application event filter that restores a modal window as soon as it is minimised. The user
/// could do nothing while it is hidden, since it blocks all other windows.
class ModalRestorer : public QObject {
 public:
  explicit ModalRestorer(QObject* application);
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace forms::qt
