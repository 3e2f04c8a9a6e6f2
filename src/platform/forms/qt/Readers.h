#pragma once

namespace forms::qt {

/// Installs descriptions for screen readers where the toolkit's own are poor: a screen is a window
/// or a dialog, a drop-down list has a name apart from its chosen entry, and buttons and the rows
/// of lists have readers of their own.
void installReaders();

}  // namespace forms::qt
