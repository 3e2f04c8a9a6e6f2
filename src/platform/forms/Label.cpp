#include "platform/forms/Label.h"

#include "platform/forms/qt/LabelText.h"
#include "platform/forms/qt/WideText.h"

namespace forms {

Label::Label(Container& container, const Design& design)
    : Control(container, design, 0,
              new qt::LabelText(container.client(), design, container.backColour())) {
  Caption(design.caption);
}

void Label::Caption(std::u16string_view caption) {
  caption_ = caption;
  static_cast<QLabel*>(widget())->setText(qt::toQt(caption));
}

}  // namespace forms
