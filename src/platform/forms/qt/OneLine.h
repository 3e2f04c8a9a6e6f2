#pragma once

#include <QValidator>

namespace forms::qt {

/// Keeps an edit to one line: line breaks of a pasted text become blanks.
class OneLine : public QValidator {
 public:
  using QValidator::QValidator;

  State validate(QString& input, int&) const override {
    for (QChar& character : input)
      if (character == u'\n' || character == u'\r' || character == QChar::LineSeparator ||
          character == QChar::ParagraphSeparator)
        character = u' ';
    return Acceptable;
  }
};

}  // namespace forms::qt
