#pragma once

#include <QWidget>

namespace forms::qt {

/// Names the widgets of a screen laid out at `scale` that have no caption of their own, for screen
/// readers. A box or list takes the name of the label above it, else a list is named after what it
/// holds, like an area that holds other widgets. A window without a title bar is named like its one
/// area.
void nameWidgets(QWidget& window, double scale);

}  // namespace forms::qt
