#pragma once

#include <QWidget>

namespace forms::qt {

/// Sets the names that screen readers use for the widgets without a caption of a screen laid out at
/// `scale`. A box or list gets the text of the label above it, a list without a label the name
/// "Items". An area with other widgets is named by what they are, and a window without a title bar
/// like its one area.
void nameWidgets(QWidget& window, double scale);

}  // namespace forms::qt
