#pragma once

#include <QObject>

namespace forms::qt {

/// Ends the process with status 1 at the next event once the X server has gone. To live as long as
/// a drag of the toolkit: that asks the server at each move, and crashes where no answer comes.
class DisplayWatch final : public QObject {
 public:
  DisplayWatch();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void customEvent(QEvent* event) override;

 private:
  int connection_;  ///< the descriptor of the connection to the X server, -1 under another platform
};

}  // namespace forms::qt
