#include "platform/forms/qt/OneLineValidator.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>

namespace forms::qt {
namespace {

bool isBreakOrControl(QChar unit) {
  return unit.category() == QChar::Other_Control || unit == QChar::LineSeparator ||
         unit == QChar::ParagraphSeparator;
}

}  // namespace

OneLineValidator::OneLineValidator(QLineEdit& edit) : QValidator(&edit), edit_(edit) {
  edit.setValidator(this);
  edit.installEventFilter(this);
  edit.setAcceptDrops(false);
}

QValidator::State OneLineValidator::validate(QString& input, int& cursor) const {
  cursor = static_cast<int>(accepted(input.left(cursor)).size());
  input = accepted(input);
  return Acceptable;
}

bool OneLineValidator::eventFilter(QObject*, QEvent* event) {
  return event->type() == QEvent::KeyPress && enter(*static_cast<QKeyEvent*>(event));
}

bool OneLineValidator::enter(const QKeyEvent& press) {
  const bool pastes = press.matches(QKeySequence::Paste);
  const QString text = pastes ? QGuiApplication::clipboard()->text() : press.text();
  // A leading combining mark belongs to the letter before the cursor.
  if (text.isEmpty() || text[0].isMark() || !(pastes || text[0].isPrint())) return false;
  const QString form = accepted(text);
  if (form == text) return false;
  edit_.insert(form);
  return true;
}

QString OneLineValidator::accepted(const QString& text) const {
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
