// Screens: load, show, modal show, tab order, positions, timers, and the end of the program.

#include "platform/forms/Form.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QWindow>

#include "platform/forms/Frame.h"
#include "platform/forms/Label.h"
#include "platform/forms/MyCommandButton.h"
#include "platform/forms/PictureBox.h"
#include "platform/forms/Timer.h"
#include "platform/process/Process.h"
#include "platform/runtime/RunTimeError.h"
#include "support/FileFaults.h"
#include "support/TestHost.h"
#include "support/WindowDriver.h"

namespace {

using MyCommandButton::ButtonDesign;
using MyCommandButton::MyButton;
using support::WindowDriver;
using testing::ElementsAre;

ButtonDesign button(const char* name, int left, int top, int tabIndex, bool visible = true) {
  ButtonDesign design;
  design.name = name;
  design.caption = u"Press";
  design.left = left;
  design.top = top;
  design.width = 1500;
  design.height = 465;
  design.tabIndex = tabIndex;
  design.visible = visible;
  return design;
}

/// A picture box of 3000 by 2000 twips at 300, 150.
forms::Design pane() {
  forms::Design design;
  design.name = "pane";
  design.left = 300;
  design.top = 150;
  design.width = 3000;
  design.height = 2000;
  design.tabIndex = 0;
  return design;
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

/// A borderless notice that closes itself after a while.
class Notice : public forms::Form {
 public:
  Notice()
      : Form({.name = "Notice",
              .width = 3000,
              .height = 1500,
              .border = forms::BorderStyle::None,
              .position = forms::StartPosition::CentreScreen,
              .inTaskBar = false}),
        timer(*this, "timer", 60) {
    timer.Tick = [this] {
      Unload();
      forms::DefaultInstance<Notice>::drop();
    };
  }
  forms::Timer timer;
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

TEST_F(Screens, LoadOnceBeforeAnythingShowsAndNotAtAllWhenTheLoadFails) {
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

TEST_F(Screens, PutEveryControlAtItsTwips) {
  show();
  const auto bounds = [&](const char* name) { return user->control(name).geometry(); };
  EXPECT_EQ(user->window().size(), QSize(400, 267));
  EXPECT_EQ(bounds("pane"), QRect(20, 10, 200, 133));
  EXPECT_EQ(bounds("inBox"), QRect(10, 5, 100, 31));
  EXPECT_EQ(bounds("second"), QRect(240, 10, 100, 31));
  screen.inBox.Left(1200);
  screen.inBox.Top(600);
  screen.inBox.Height(750);
  EXPECT_EQ(bounds("inBox"), QRect(80, 40, 100, 50));
  EXPECT_EQ(screen.inBox.Width().value, 1500);
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

TEST_F(Screens, AreasAndWindowsWithoutATitleBarAreNamedAfterTheirContent) {
  const auto name = [](QWidget& widget) {
    return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name);
  };
  show();
  EXPECT_EQ(name(user->control("pane")), "Commands");
  EXPECT_EQ(name(user->window()), "Main");

  class Saved : public forms::Form {
   public:
    Saved()
        : Form(
              {.name = "Saved", .width = 3000, .height = 1500, .border = forms::BorderStyle::None}),
          frame(*this, pane()) {}
    forms::Frame frame;
  };
  Saved notice;
  forms::Design design;
  design.name = "label";
  design.caption = u"All done";
  const forms::Label label(notice.frame, design);
  notice.Show();
  const WindowDriver atNotice("Saved");
  EXPECT_EQ(name(atNotice.control("pane")), "All done");
  EXPECT_EQ(name(atNotice.window()), "All done");
}

TEST_F(Screens, AModalNoticeBlocksTheOthersUntilItsTimerClosesIt) {
  show();
  for (int i = 0; i < 2; ++i) {
    bool wasShown = false;
    bool wasClosed = false;
    support::soon([&] {
      WindowDriver notice("Notice");
      wasShown = true;
      user->click("first");
      user->key(Qt::Key_Space);
      notice.key(Qt::Key_Escape);
      notice.close();
      wasClosed = !WindowDriver::isShown("Notice");
    });
    forms::DefaultInstance<Notice>::get()->ShowModal();
    EXPECT_TRUE(wasShown);
    EXPECT_FALSE(wasClosed);
    EXPECT_FALSE(WindowDriver::isShown("Notice"));
  }
  EXPECT_THAT(screen.log, ElementsAre("load"));
  user->click("first");
  EXPECT_THAT(screen.log, ElementsAre("load", "first"));
}

TEST_F(Screens, AModalDialogReturnsWhenItsFrameClosesItAndIsCreatedAgainNextTime) {
  show();
  const auto first = forms::DefaultInstance<Dialog>::get();
  QSize size;
  support::soon([&] {
    WindowDriver dialog("Dialog");
    size = dialog.window().size();
    EXPECT_EQ(dialog.window().minimumSize(), dialog.window().maximumSize());
    dialog.close();
  });
  first->ShowModal();
  EXPECT_EQ(size, QSize(200, 100));
  EXPECT_TRUE(first->unloaded());
  EXPECT_NE(forms::DefaultInstance<Dialog>::get(), first);
  forms::DefaultInstance<Dialog>::drop();
}

// A press that a modal screen blocked must not count as the first of a double click.
TEST_F(Screens, ABlockedPressCountsForNoDoubleClick) {
  show();
  screen.first.DblClick = [&] { screen.log.push_back("double"); };
  user->moveTo("first");
  support::soon([&] {
    WindowDriver dialog("Dialog");
    user->click("first");
    dialog.close();
  });
  forms::DefaultInstance<Dialog>::get()->ShowModal();
  forms::DefaultInstance<Dialog>::drop();
  screen.log.clear();
  user->clickAgain("first");
  EXPECT_THAT(screen.log, ElementsAre("first"));
}

TEST_F(Screens, AfterTheEndModalLoopsReturnAndTheHandlerStops) {
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
  forms::DefaultInstance<Notice>::get()->timer.Tick = [] {
    throw runtime::RunTimeError(runtime::ErrorNumber::Overflow);
  };
  process::dispatch([] { forms::DefaultInstance<Notice>::get()->ShowModal(); });
  ASSERT_EQ(host.failures.size(), 1U);
  EXPECT_EQ(host.failures[0].number(), 6);
  forms::DefaultInstance<Notice>::drop();
}

TEST_F(Screens, AModalScreenThatIsMinimisedShowsItselfAgain) {
  bool shows = false;
  support::soon([&shows] {
    QWidget& window = WindowDriver("Dialog").window();
    window.showMinimized();
    support::settle();
    shows = window.isVisible() && !window.isMinimized();
    forms::DefaultInstance<Dialog>::get()->Unload();
  });
  process::dispatch([] { forms::DefaultInstance<Dialog>::get()->ShowModal(); });
  EXPECT_TRUE(shows);
  forms::DefaultInstance<Dialog>::drop();
}

TEST(UnframedDialog, HasAnEdgeOfItsOwn) {
  class Plain : public forms::Form {
   public:
    Plain()
        : Form({.name = "Plain",
                .width = 600,
                .height = 600,
                .border = forms::BorderStyle::FixedDialog}) {}
  };
  support::TestHost host;
  Plain screen;
  screen.Show();
  const WindowDriver user("Plain");
  const auto pixel = [&](int x, int y) { return user.window().grab().toImage().pixel(x, y); };
  EXPECT_TRUE(support::waitUntil([&] { return pixel(0, 20) != pixel(20, 20); }));
  EXPECT_EQ(pixel(39, 20), pixel(0, 20));
}

class Maximised : public forms::Form {
 public:
  explicit Maximised(bool maximiseBox)
      : Form({.name = "Maximised",
              .width = 6000,
              .height = 3000,
              .border = forms::BorderStyle::FixedSingle,
              .maximiseBox = maximiseBox,
              .startMaximised = true,
              .restoredAt = forms::Offset{120, 450}}) {}
};

TEST(MaximisedScreen, StaysMaximisedWithoutAMaximiseBox) {
  support::TestHost host;
  Maximised screen(false);
  screen.Show();
  const WindowDriver user("Maximised");
  user.window().showNormal();
  support::settle();
  EXPECT_TRUE(user.window().isMaximized());
  EXPECT_EQ(user.window().size(), QSize(1920, 1080));
  user.window().showMinimized();
  support::settle();
  EXPECT_TRUE(user.window().isMinimized());
}

TEST(MaximisedScreen, IsFixedInSizeOnlyWhileItIsNotMaximised) {
  support::TestHost host;
  Maximised screen(true);
  screen.Show();
  const WindowDriver user("Maximised");
  EXPECT_TRUE(user.window().isMaximized());
  EXPECT_EQ(user.window().size(), QSize(1920, 1080));
  user.window().showNormal();
  support::settle();
  EXPECT_EQ(user.window().geometry(), QRect(8, 30, 400, 200));
  EXPECT_EQ(user.window().maximumSize(), QSize(400, 200));
  user.window().showMaximized();
  support::settle();
  EXPECT_EQ(user.window().size(), QSize(1920, 1080));
}

TEST(Label, ShowsPlainText) {
  class Labels : public forms::Form {
   public:
    Labels() : Form({.name = "Labels", .width = 6000, .height = 3000}) {}
  };
  support::TestHost host;
  Labels screen;
  forms::Design design;
  design.name = "label";
  design.width = 4500;
  design.height = 300;
  design.foreColour = forms::kBlack;
  forms::Label label(screen, design);
  screen.Show();
  const WindowDriver user("Labels");
  const auto ink = [&](std::u16string_view caption) {
    label.Caption(caption);
    const QImage picture = user.control("label").grab().toImage();
    int dark = 0;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x)
        dark += picture.pixelColor(x, y).lightness() < 100 ? 1 : 0;
    return dark;
  };
  EXPECT_EQ(ink(u""), 0);
  EXPECT_GT(ink(u"Fish & Chips"), ink(u"Fish  Chips"));
  EXPECT_GT(ink(u"<b>Tea</b>"), ink(u"Tea"));
}

}  // namespace
