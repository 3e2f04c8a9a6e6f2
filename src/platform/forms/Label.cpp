#include "platform/forms/Label.h"

#include "platform/forms/qt/LabelText.h"
#include "platform/forms/qt/Text.h"

namespace forms {

Label::Label(Container& container, const Design& design)
    : Control(container, design, 0,
              new qt::LabelText(clientOf(container), design, backColourOf(container))) {
  Caption(design.caption);
}

void Label::Caption(std::u16string_view caption) {
  caption_ = caption;
  static_cast<QLabel*>(widget())->setText(qt::toQt(caption));
}

}  // namespace forms
