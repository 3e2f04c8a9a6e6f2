#pragma once

#include <QWindow>

namespace forms::qt {

/// Tells window managers, before a window is shown, to list it in no task bar. The toolkit has no
/// word for that; elsewhere than under X there is nothing to tell.
void keepOutOfTaskBars(const QWindow& window);

}  // namespace forms::qt
