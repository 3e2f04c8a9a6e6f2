#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "platform/forms/FormDesign.h"
#include "platform/forms/WindowPart.h"

class QEventLoop;

namespace forms::qt {

/// The toolkit's window of a screen.
class Window final : public QWidget {
 public:
  explicit Window(const FormDesign& design);

  static bool anyShown();
  /// Sets the function that is called when the last shown screen has closed; empty for none.
  static void onLastClosed(std::function<void()> call);

  /// Adds a control of the screen; called in the order in which the controls are created.
  void add(WindowPart& part) { parts_.push_back(&part); }
  void remove(WindowPart& part) { std::erase(parts_, &part); }
  /// Adds a timer that runs while the screen is shown.
  void addTimer(const char* name, int milliseconds, std::function<void()> tick);

  double scale() const { return scale_; }
  Colour backColour() const { return design_.backColour; }

  /// Shows the loaded screen according to its design.
  void showScreen();
  /// Shows it above the others, which get no input, and returns after it has closed. Unwinds to the
  /// dispatcher when the process has ended meanwhile.
  void showScreenModal();
  /// Closes the screen for good.
  void unload();
  bool isClosed() const { return closed_; }

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
  void manageItself();
  void centre();
  void orderTabs();

  FormDesign design_;
  std::vector<WindowPart*> parts_;
  QEventLoop* modalLoop_ = nullptr;
  double scale_ = 1;
  bool closed_ = false;
};

}  // namespace forms::qt
