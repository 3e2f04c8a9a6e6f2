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
  /// Sets what is called when the last shown screen is taken away; empty for nothing.
  static void onLastGone(std::function<void()> call);

  /// A control of the screen, in the order of their making.
  void add(WindowPart& part) { parts_.push_back(&part); }
  void remove(WindowPart& part) { std::erase(parts_, &part); }
  /// A timer that runs while the screen is shown.
  void addTimer(const char* name, int milliseconds, std::function<void()> tick);

  double scale() const { return scale_; }
  Colour backColour() const { return design_.backColour; }

  /// Shows the loaded screen as its design has it.
  void appear();
  /// Shows it above the others, which get no input, and returns when it has left. Does not return
  /// when the process was ended meanwhile.
  void appearModal();
  /// Takes the screen away for good.
  void leave();
  bool hasLeft() const { return left_; }

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
  void adaptToNoManager();
  void centre();
  void orderTabs();

  FormDesign design_;
  std::vector<WindowPart*> parts_;
  QEventLoop* modalLoop_ = nullptr;
  double scale_ = 1;
  bool left_ = false;
  bool seen_ = false;  ///< it has been painted
};

}  // namespace forms::qt
