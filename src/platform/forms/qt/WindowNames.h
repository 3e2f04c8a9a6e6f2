#pragma once

#include <QWidget>

namespace forms::qt {

/// Sets the accessible names of a screen's widgets that have no caption; `scale` is that of its
/// layout. A box or list gets the text of the label above it, a list without one "Items". A picture
/// box or frame is called "Keys" or "Commands" after the buttons in it, or by the text of its
/// label. A window without a title gets the name of its picture box or frame.
void nameWidgets(QWidget& window, double scale);

}  // namespace forms::qt
