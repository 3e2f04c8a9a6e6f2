#pragma once

#include <QWindow>

namespace forms::qt {

/// Asks the window manager not to list a window in task bars; must be called before the window is
/// shown. The toolkit has no call for this. Does nothing on window systems other than X.
void keepOutOfTaskBars(const QWindow& window);

}  // namespace forms::qt
