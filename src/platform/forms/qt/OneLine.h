#pragma once

#include <QValidator>

class QKeyEvent;
class QLineEdit;

namespace forms::qt {

/// Limits a line edit to one line of complete characters: control characters and line breaks of
/// pasted text become blanks; an unpaired surrogate, which a length limit can leave, is dropped.
class OneLine : public QValidator {
 public:
  using QValidator::QValidator;
  State validate(QString& input, int& cursor) const final;

  /// If the text that a key types or pastes must be changed to be accepted, inserts the accepted
  /// form and returns true; otherwise does nothing and returns false. A change made later, in
  /// `validate`, couldn't be undone by the user.
  bool enter(const QKeyEvent& event, QLineEdit& edit) const;

 protected:
  /// Returns the entered text with all characters replaced that the edit doesn't accept.
  virtual QString accepted(const QString& text) const;
};

}  // namespace forms::qt
