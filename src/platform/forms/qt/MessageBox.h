#pragma once

#include <QMessageBox>
#include <string>

namespace forms::qt {

/// A message box of plain text. Only its buttons close a Yes/No box: neither Escape nor the window
/// frame does.
class MessageBox final : public QMessageBox {
 public:
  MessageBox(const std::u16string& text, const std::u16string& title, StandardButtons buttons);
  /// Shows it and returns the button that closed it; 0 at once when the process has ended.
  int ask();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  bool isQuestion_;
};

}  // namespace forms::qt
