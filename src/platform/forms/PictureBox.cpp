#include "platform/forms/PictureBox.h"

#include "platform/forms/qt/Surface.h"

namespace forms {

PictureBox::PictureBox(Container& container, const Design& design)
    : Control(container, design, 0, new qt::Surface(container.client(), design.backColour)),
      backColour_(design.backColour) {}

}  // namespace forms
