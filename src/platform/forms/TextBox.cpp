#include "platform/forms/TextBox.h"

#include "platform/forms/qt/LineEdit.h"
#include "platform/forms/qt/WideText.h"

namespace forms {

TextBox::TextBox(Container& container, const Design& design, int maxLength)
    : Control(container, design, 0, new qt::LineEdit(container.client(), maxLength)) {
  Text(design.caption);
}

std::u16string TextBox::Text() const {
  return qt::fromQt(static_cast<QLineEdit*>(widget())->text());
}

void TextBox::Text(std::u16string_view text) {
  static_cast<QLineEdit*>(widget())->setText(qt::toQt(text));
}

}  // namespace forms
