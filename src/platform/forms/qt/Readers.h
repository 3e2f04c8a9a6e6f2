#pragma once

namespace forms::qt {

/// Tells the toolkit how screen readers see the parts that it describes poorly by itself: a screen
/// is a window or a dialog, a drop-down list keeps its name apart from the chosen entry, and
/// buttons and the rows of lists have readers of their own.
void installReaders();

}  // namespace forms::qt
