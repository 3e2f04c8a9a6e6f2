#pragma once

#include "platform/forms/qt/OneLineValidator.h"

namespace forms::qt {

/// Limits a line edit to one line of characters of windows-1252: a letter with combining marks
/// becomes one character if the code page has it, and any other character becomes "?".
class CodePageValidator final : public OneLineValidator {
 public:
  using OneLineValidator::OneLineValidator;

 protected:
  QString accepted(const QString& text) const override;
};

}  // namespace forms::qt
