#pragma once

#include <QValidator>

class QKeyEvent;
class QLineEdit;

namespace forms::qt {

/// Limits a line edit to one line of complete characters: control characters and line breaks of
/// pasted text become blanks; an unpaired surrogate, which a length limit can leave, is dropped.
/// The edit, which owns this object, accepts no drops: of all controls only the buttons of the key
/// block do.
class OneLineValidator : public QValidator {
 public:
  explicit OneLineValidator(QLineEdit& edit);
  State validate(QString& input, int& cursor) const final;

 protected:
  /// Returns the entered text with all characters replaced that the edit doesn't accept.
  virtual QString accepted(const QString& text) const;

 private:
  /// If the text that a key types or pastes must be changed to be accepted, inserts the accepted
  /// form and consumes the event. A change made later, in `validate`, couldn't be undone by the
  /// user.
  bool eventFilter(QObject* edit, QEvent* event) override;
  bool enter(const QKeyEvent& press);

  QLineEdit& edit_;
};

}  // namespace forms::qt
