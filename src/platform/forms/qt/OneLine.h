#pragma once

#include <QValidator>

class QKeyEvent;
class QLineEdit;

namespace forms::qt {

/// Limits an edit to one line of complete characters: control characters and line breaks of a
/// pasted text become blanks, and half of a surrogate pair, as a length limit may leave one, is
/// dropped.
class OneLine : public QValidator {
 public:
  using QValidator::QValidator;
  State validate(QString& input, int& cursor) const final;

  /// Enters the text that a key types or pastes as the edit accepts it, where that differs from the
  /// text itself, and returns true: a text that the edit changes only afterwards can't be undone.
  bool enter(const QKeyEvent& event, QLineEdit& edit) const;

 protected:
  /// Returns the entered text with all characters replaced that the edit doesn't accept.
  virtual QString accepted(const QString& text) const;
};

}  // namespace forms::qt
