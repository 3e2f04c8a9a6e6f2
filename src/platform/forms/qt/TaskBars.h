#pragma once

#include <QWindow>

namespace forms::qt {

/// Tells window managers, before a window is shown, to list it in no task bar. The toolkit has no
/// call for that. Does nothing under another window system than X.
void keepOutOfTaskBars(const QWindow& window);

}  // namespace forms::qt
