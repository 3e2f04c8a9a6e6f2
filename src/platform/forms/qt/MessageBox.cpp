#include "platform/forms/qt/MessageBox.h"

#include <QApplication>
#include <QKeyEvent>

#include "platform/forms/qt/Raise.h"
#include "platform/forms/qt/WideText.h"

namespace forms::qt {

MessageBox::MessageBox(const std::u16string& text, const std::u16string& title,
                       StandardButtons buttons)
    : QMessageBox(QApplication::activeWindow()), asks_(buttons == (Yes | No)) {
  setWindowTitle(toQt(title));
  setTextFormat(Qt::PlainText);
  setText(toQt(text));
  setStandardButtons(buttons);
  setDefaultButton(asks_ ? Yes : Ok);
  if (asks_) setWindowFlag(Qt::WindowCloseButtonHint, false);
}

int MessageBox::ask() {
  const EndWatch watch([this] { done(0); });
  return process::hasEnded() ? 0 : exec();
}

void MessageBox::closeEvent(QCloseEvent* event) {
  if (asks_)
    event->ignore();
  else
    QMessageBox::closeEvent(event);
}

void MessageBox::keyPressEvent(QKeyEvent* event) {
  if (asks_ && event->matches(QKeySequence::Cancel))
    event->accept();
  else
    QMessageBox::keyPressEvent(event);
}

}  // namespace forms::qt
