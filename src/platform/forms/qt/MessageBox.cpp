#include "platform/forms/qt/MessageBox.h"

#include <QApplication>
#include <QKeyEvent>

#include "platform/forms/qt/Raise.h"
#include "platform/forms/qt/WideText.h"

namespace forms::qt {

MessageBox::MessageBox(const std::u16string& text, const std::u16string& title,
                       StandardButtons buttons)
    : QMessageBox(QApplication::activeWindow()), isQuestion_(buttons == (Yes | No)) {
  setWindowTitle(toQt(title));
  setTextFormat(Qt::PlainText);
  setText(toQt(text));
  setStandardButtons(buttons);
  setDefaultButton(isQuestion_ ? Yes : Ok);
  if (isQuestion_) setWindowFlag(Qt::WindowCloseButtonHint, false);
}

int MessageBox::ask() {
  const EndRegistration registration([this] { done(0); });
  return process::hasEnded() ? 0 : exec();
}

void MessageBox::closeEvent(QCloseEvent* event) {
  if (isQuestion_)
    event->ignore();
  else
    QMessageBox::closeEvent(event);
}

void MessageBox::keyPressEvent(QKeyEvent* event) {
  if (isQuestion_ && event->matches(QKeySequence::Cancel))
    event->accept();
  else
    QMessageBox::keyPressEvent(event);
}

}  // namespace forms::qt
