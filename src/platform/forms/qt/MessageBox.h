#pragma once

#include <QMessageBox>
#include <string>

namespace forms::qt {

/// A message box of plain text. A Yes/No box has no third way out: neither Escape nor the frame
/// closes it.
class MessageBox final : public QMessageBox {
 public:
  MessageBox(const std::u16string& text, const std::u16string& title, StandardButtons buttons);
  /// Shows it and returns the button that closed it; 0 at once when the process has been ended.
  int ask();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  bool asks_;
};

}  // namespace forms::qt
