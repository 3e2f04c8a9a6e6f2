#pragma once

#include <QWidget>
#include <vector>

#include "platform/forms/Form.h"

class QEventLoop;
class QTimer;

namespace forms {

/// The toolkit's window of a screen.
struct Form::Window final : QWidget {
  Window(Form& screen, const FormDesign& stored);
  ~Window() override;

  /// The screens that live, in the order of their making.
  static std::vector<Form*>& all();
  static bool anyShown();

  /// Shows the loaded screen as its design has it.
  void appear();
  /// Takes the screen away for good.
  void leave();
  /// Destroys the widgets below a screen that lives on: the application goes first at the end.
  static void release(Form& screen);

  Form& form;
  FormDesign design;
  std::vector<Control*> controls;
  std::vector<QTimer*> timers;
  QEventLoop* modalLoop = nullptr;
  double scale = 1;
  bool loaded = false;
  bool unloaded = false;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QSize clientSize() const;
  QSize extent() const;
  void fit(QSize room);
  void fitDesktop();
  void fixSize();
  bool staysMaximised() const;
  void fillUnmanagedDesktop();
  void centre();
  void orderTabs();

  bool seen_ = false;  ///< it has been painted
};

}  // namespace forms
