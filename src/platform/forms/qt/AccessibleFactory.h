#pragma once

namespace forms::qt {

/// Installs accessible interfaces where the toolkit's own are insufficient: a screen is a window or
/// a dialog, a drop-down list keeps its own name besides the chosen entry, and buttons and list
/// rows have interfaces of their own classes.
void installAccessibleFactory();

}  // namespace forms::qt
