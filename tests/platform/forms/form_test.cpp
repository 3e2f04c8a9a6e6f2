// Screens: load, show, modal show, tab order, positions, timers, and the end of the program.

#include "platform/forms/Form.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <QWidget>
#include <QWindow>

#include "platform/forms/Label.h"
#include "platform/forms/MyCommandButton.h"
#include "platform/forms/PictureBox.h"
#include "platform/forms/Timer.h"
#include "platform/process/Process.h"
#include "platform/runtime/RunTimeError.h"
#include "support/Designs.h"
#include "support/FileFaults.h"
#include "support/TestHost.h"
#include "support/WindowDriver.h"

namespace {

using MyCommandButton::ButtonDesign;
using MyCommandButton::MyButton;
using support::WindowDriver;
using testing::ElementsAre;

ButtonDesign button(const char* name, int left, int top, int tabIndex, bool visible = true) {
  auto design = support::designOf<ButtonDesign>(name, left, top, 1500, 465, tabIndex);
  design.caption = u"Press";
  design.visible = visible;
  return design;
}

forms::Design pane() {
  return support::designOf("pane", 300, 150, 3000, 2000, 0);
}

class MainScreen : public forms::Form {
 public:
  MainScreen()
      : Form({.name = "MainScreen", .caption = u"Main", .width = 6000, .height = 4000}),
        box(*this, pane()),
        inBox(box, button("inBox", 150, 75, 3)),
        hidden(*this, button("hidden", 0, 3000, 1, false)),
        second(*this, button("second", 3600, 150, 4)),
        first(*this, button("first", 3600, 900, 2)) {
    first.Click = [this] { log.push_back("first"); };
  }
  void Form_Load() override {
    log.push_back(WindowDriver::isShown("MainScreen") ? "load while shown" : "load");
    if (failing) throw runtime::RunTimeError(runtime::ErrorNumber::TypeMismatch);
  }

  forms::PictureBox box;
  MyButton inBox;
  MyButton hidden;
  MyButton second;
  MyButton first;
  std::vector<std::string> log;
  bool failing = false;
};

/// A screen without controls of its own.
struct Bare : forms::Form {
  explicit Bare(const forms::FormDesign& design) : Form(design) {}
};

class Dialog : public forms::Form {
 public:
  Dialog()
      : Form({.name = "Dialog",
              .width = 3000,
              .height = 1500,
              .border = forms::BorderStyle::FixedDialog,
              .minimiseBox = false,
              .maximiseBox = false,
              .position = forms::StartPosition::CentreScreen}),
        ok(*this, button("ok", 150, 150, 0)) {}
  MyButton ok;
};

class Screens : public testing::Test {
 protected:
  void show() {
    screen.Show();
    user.emplace("MainScreen");
    support::waitUntil([] { return QApplication::focusWidget() != nullptr; });
  }

  support::TestHost host;
  MainScreen screen;
  std::optional<WindowDriver> user;
};

TEST_F(Screens, LoadOnceBeforeTheyShowAndStayHiddenWhenTheLoadFails) {
  screen.failing = true;
  EXPECT_EQ(support::errorNumberOf([&] { screen.Show(); }), 13);
  support::settle();
  EXPECT_FALSE(WindowDriver::isShown("MainScreen"));

  screen.failing = false;
  screen.log.clear();
  screen.Show();
  screen.Show();
  EXPECT_TRUE(WindowDriver::isShown("MainScreen"));
  EXPECT_THAT(screen.log, ElementsAre("load"));
}

TEST_F(Screens, TabFollowsTheTabIndexesOverVisibleStops) {
  show();
  EXPECT_TRUE(user->hasFocus("first"));
  std::vector<std::string> order;
  for (int i = 0; i < 3; ++i) {
    user->tab();
    order.push_back(QApplication::focusWidget()->objectName().toStdString());
  }
  EXPECT_THAT(order, ElementsAre("inBox", "second", "first"));
  screen.hidden.Visible(true);
  screen.inBox.Visible(false);
  user->tab();
  EXPECT_TRUE(user->hasFocus("second"));
  user->tab();
  EXPECT_TRUE(user->hasFocus("hidden"));
}

TEST_F(Screens, PictureBoxesAndWindowsWithoutATitleBarAreNamedAfterTheirContent) {
  const auto name = [](QWidget& widget) {
    return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name);
  };
  show();
  EXPECT_EQ(name(user->control("pane")), "Commands");
  EXPECT_EQ(name(user->window()), "Main");

  Bare notice({.name = "Saved", .width = 3000, .height = 1500, .border = forms::BorderStyle::None});
  forms::PictureBox frame(notice, pane());
  forms::Design design;
  design.name = "label";
  design.caption = u"All done";
  const forms::Label label(frame, design);
  notice.Show();
  const WindowDriver atNotice("Saved");
  EXPECT_EQ(name(atNotice.control("pane")), "All done");
  EXPECT_EQ(name(atNotice.window()), "All done");
}

// A press that a modal screen blocked must not count as the first of a double click.
TEST_F(Screens, ABlockedPressDoesNotBeginADoubleClick) {
  show();
  screen.first.DblClick = [&] { screen.log.push_back("double"); };
  user->moveTo("first");
  support::soon([&] {
    WindowDriver dialog("Dialog");
    EXPECT_EQ(dialog.window().minimumSize(), dialog.window().maximumSize());
    user->click("first");
    dialog.close();
  });
  forms::DefaultInstance<Dialog>::get()->ShowModal();
  forms::DefaultInstance<Dialog>::drop();
  screen.log.clear();
  user->clickAgain("first");
  EXPECT_THAT(screen.log, ElementsAre("first"));
}

TEST_F(Screens, AfterTheProgramsEndModalLoopsReturnAndTheHandlerStops) {
  show();
  bool wentOn = false;
  screen.first.Click = [&] {
    forms::DefaultInstance<Dialog>::get()->ShowModal();
    wentOn = true;
  };
  support::soon([] {
    WindowDriver dialog("Dialog");
    forms::DefaultInstance<Dialog>::get()->ok.Click = [] { process::endProgram(); };
    dialog.click("ok");
  });
  user->click("first");
  EXPECT_EQ(host.ends, 1);
  EXPECT_EQ(host.endStatus, 0);
  EXPECT_FALSE(wentOn);
  forms::DefaultInstance<Dialog>::drop();
}

TEST_F(Screens, AFailureInATimerIsReported) {
  forms::Timer timer(screen, "timer", 60);
  timer.Tick = [] { throw runtime::RunTimeError(runtime::ErrorNumber::Overflow); };
  show();
  support::waitUntil([&] { return !host.failures.empty(); });
  ASSERT_EQ(host.failures.size(), 1U);
  EXPECT_EQ(host.failures[0].number(), 6);
}

TEST(UnframedDialog, HasABorderWithoutAWindowManager) {
  support::TestHost host;
  Bare screen(
      {.name = "Plain", .width = 600, .height = 600, .border = forms::BorderStyle::FixedDialog});
  screen.Show();
  const WindowDriver user("Plain");
  const auto pixel = [&](int x, int y) { return user.window().grab().toImage().pixel(x, y); };
  EXPECT_TRUE(support::waitUntil([&] { return pixel(0, 20) != pixel(20, 20); }));
  EXPECT_EQ(pixel(39, 20), pixel(0, 20));
}

}  // namespace
