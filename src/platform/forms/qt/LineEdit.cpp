#include "platform/forms/qt/LineEdit.h"

#include <limits>

namespace forms::qt {

LineEdit::LineEdit(QWidget* parent, int maxLength)
    : QLineEdit(parent), oneLine_(*new OneLine(this)) {
  constexpr int kTextMargin = 3;  // aligns the text with that of lists and drop-down lists
  setMaxLength(maxLength > 0 ? maxLength : std::numeric_limits<int>::max());
  setValidator(&oneLine_);
  setTextMargins(kTextMargin, 0, kTextMargin, 0);
  setAcceptDrops(false);  // only keys accept drops
}

void LineEdit::keyPressEvent(QKeyEvent* event) {
  if (!oneLine_.enter(*event, *this)) QLineEdit::keyPressEvent(event);
}

}  // namespace forms::qt
