#pragma once

#include <string_view>

class QWidget;

namespace forms::qt {

/// Sets a widget's tool tip, which is shown as plain text, wrapped. The toolkit would interpret
/// markup in it, and would show a long one in a single line.
void setPlainToolTip(QWidget& widget, std::u16string_view text);

}  // namespace forms::qt
