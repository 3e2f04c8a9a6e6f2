#include "platform/forms/qt/CodePageValidator.h"

#include "platform/forms/qt/WideText.h"
#include "platform/runtime/CodePage.h"

namespace forms::qt {

QString CodePageValidator::accepted(const QString& text) const {
  QString composed = OneLineValidator::accepted(text).normalized(QString::NormalizationForm_C);
  // A surrogate pair becomes one "?", not two: drop its second unit.
  composed.removeIf([](QChar unit) { return unit.isLowSurrogate(); });
  return toQt(runtime::fromCodePage(runtime::toCodePage(fromQt(composed))));
}

}  // namespace forms::qt
