#include "platform/forms/TextBox.h"

#include <QLineEdit>
#include <limits>

#include "platform/forms/qt/OneLine.h"
#include "platform/forms/qt/Text.h"

namespace forms {
namespace {

// Puts the text in line with that of lists and drop-down lists.
constexpr int kTextMargin = 3;

QLineEdit* makeEdit(QWidget* parent, int maxLength) {
  auto* edit = new QLineEdit(parent);
  edit->setMaxLength(maxLength > 0 ? maxLength : std::numeric_limits<int>::max());
  edit->setValidator(new qt::OneLine(edit));
  edit->setTextMargins(kTextMargin, 0, kTextMargin, 0);
  edit->setAcceptDrops(false);  // what is dragged goes onto keys alone
  return edit;
}

}  // namespace

TextBox::TextBox(Container& container, const Design& design, int maxLength)
    : Control(container, design, 0, makeEdit(clientOf(container), maxLength)) {
  Text(design.caption);
}

std::u16string TextBox::Text() const {
  return qt::fromQt(static_cast<QLineEdit*>(widget())->text());
}

void TextBox::Text(std::u16string_view text) {
  static_cast<QLineEdit*>(widget())->setText(qt::toQt(text));
}

}  // namespace forms
