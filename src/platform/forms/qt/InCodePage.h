#pragma once

#include "platform/forms/qt/OneLine.h"

namespace forms::qt {

/// Keeps an edit, in addition, to the characters that the machine's code page has: a letter and its
/// combining marks become the one character that stands for them, and any other character "?".
class InCodePage final : public OneLine {
 public:
  using OneLine::OneLine;

 protected:
  QString accepted(const QString& text) const override;
};

}  // namespace forms::qt
