#pragma once

#include <QValidator>

namespace forms::qt {

/// Keeps an edit to one line of complete characters: control characters and line breaks of a pasted
/// text become blanks, and half of a surrogate pair, such as a length limit leaves, is dropped.
class OneLine : public QValidator {
 public:
  using QValidator::QValidator;
  State validate(QString& input, int& cursor) const final;

 protected:
  /// The text that the edit takes for a text that was entered.
  virtual QString accepted(const QString& text) const;
};

}  // namespace forms::qt
