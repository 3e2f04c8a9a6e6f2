#pragma once

#include <QWindow>

namespace forms::qt {

/// False on an X server without a window manager, and off-screen. True under Wayland, where the
/// desktop manages the windows.
bool hasWindowManager();

/// Asks the window manager not to list a window in task bars; must be called before the window is
/// shown. The toolkit has no call for this. Does nothing on display systems other than X.
void keepOutOfTaskBars(const QWindow& window);

}  // namespace forms::qt
