#pragma once

#include "platform/forms/qt/OneLine.h"

namespace forms::qt {

/// Also limits an edit to the characters of the machine's code page: a letter and its combining
/// marks become one character where the code page has it, and any other character becomes "?".
class InCodePage final : public OneLine {
 public:
  using OneLine::OneLine;

 protected:
  QString accepted(const QString& text) const override;
};

}  // namespace forms::qt
