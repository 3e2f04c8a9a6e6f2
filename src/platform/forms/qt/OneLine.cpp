#include "platform/forms/qt/OneLine.h"

namespace forms::qt {
namespace {

bool isBreakOrControl(QChar unit) {
  return unit.category() == QChar::Other_Control || unit == QChar::LineSeparator ||
         unit == QChar::ParagraphSeparator;
}

}  // namespace

QValidator::State OneLine::validate(QString& input, int& cursor) const {
  cursor = static_cast<int>(accepted(input.left(cursor)).size());
  input = accepted(input);
  return Acceptable;
}

QString OneLine::accepted(const QString& text) const {
  QString line;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const QChar unit = text[i];
    if (!unit.isSurrogate()) {
      line += isBreakOrControl(unit) ? QChar(u' ') : unit;
    } else if (unit.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
      line += unit;
      line += text[++i];
    }
  }
  return line;
}

}  // namespace forms::qt
