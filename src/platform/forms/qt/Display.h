#pragma once

namespace forms::qt {

/// True where there is a display on which the toolkit can open its windows.
bool displayAvailable();

/// Writes to standard error that there is no display, and ends the process with status 1.
[[noreturn]] void endWithoutDisplay();

}  // namespace forms::qt
