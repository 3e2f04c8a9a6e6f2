#include "platform/forms/qt/LineEdit.h"

#include <limits>

#include "platform/forms/qt/OneLineValidator.h"

namespace forms::qt {

LineEdit::LineEdit(QWidget* parent, int maxLength) : QLineEdit(parent) {
  constexpr int kTextMargin = 3;  // aligns the text with that of lists and drop-down lists
  setMaxLength(maxLength > 0 ? maxLength : std::numeric_limits<int>::max());
  setTextMargins(kTextMargin, 0, kTextMargin, 0);
  new OneLineValidator(*this);
}

}  // namespace forms::qt
