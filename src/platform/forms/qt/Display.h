#pragma once

namespace forms::qt {

/// True when there is a display that the toolkit can open its windows on.
bool displayAvailable();

/// Says on standard error that there is none, and ends the process with status 1.
[[noreturn]] void endWithoutDisplay();

}  // namespace forms::qt
