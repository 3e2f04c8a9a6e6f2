// The push button: its properties, its events, its accessible names and its painting.

#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <QDragEnterEvent>
#include <QImage>
#include <QMimeData>
#include <QTest>
#include <QWindow>
#include <algorithm>

#include "platform/forms/Form.h"
#include "platform/forms/MyCommandButton.h"
#include "support/Designs.h"
#include "support/TestHost.h"
#include "support/WindowDriver.h"

namespace {

using MyCommandButton::ButtonDesign;
using MyCommandButton::MyButton;
using support::WindowDriver;
using testing::ElementsAre;

constexpr forms::Colour kRed = 0x0000FF;
constexpr forms::Colour kGreen = 0x00FF00;
constexpr forms::Colour kBlue = 0xFF0000;

ButtonDesign keyDesign(std::int16_t index) {
  auto design = support::designOf<ButtonDesign>("MyButton1", 1350 * (index % 3), 1080 * (index / 3),
                                                1320, 1050, index);
  design.showFocus = index != 1;
  design.isKey = true;
  return design;
}

/// Five keys, three in a row, that log their events.
class KeyScreen : public forms::Form {
 public:
  KeyScreen()
      : Form({.name = "KeyScreen", .width = 6000, .height = 3000, .backColour = forms::kWhite}),
        keys(*this, 5, keyDesign) {
    for (std::int16_t i = 0; i < keys.count(); ++i) {
      const std::string key = std::to_string(i);
      keys(i).Click = [this, key] { log.push_back("Click " + key); };
      keys(i).DblClick = [this, key] { log.push_back("DblClick " + key); };
      keys(i).GotFocus = [this, key] { log.push_back("GotFocus " + key); };
      keys(i).MouseOver = [this, key] { log.push_back("MouseOver " + key); };
    }
  }

  forms::ControlArray<MyButton> keys;
  std::vector<std::string> log;
};

/// The number of pixels that are clearly lighter or darker in the second picture.
int changedPixels(const QImage& before, const QImage& after) {
  int changed = 0;
  for (int y = 0; y < after.height(); ++y)
    for (int x = 0; x < after.width(); ++x)
      changed +=
          std::abs(before.pixelColor(x, y).lightness() - after.pixelColor(x, y).lightness()) > 60;
  return changed;
}

class Button : public testing::Test {
 protected:
  Button() {
    screen.Show();
    user.emplace("KeyScreen");
    support::waitUntil([this] { return user->hasFocus("MyButton1(0)"); });
    screen.log.clear();
  }

  QImage picture(const std::string& key) { return user->control(key).grab().toImage(); }
  /// The colour that fills a key, away from its edge and its text.
  QRgb fill(const std::string& key) { return picture(key).pixel(8, 8); }

  support::TestHost host;
  KeyScreen screen;
  std::optional<WindowDriver> user;
};

TEST_F(Button, OnlyAPressAndReleaseOnOneButtonOrAKeyboardPressIsAClick) {
  user->click("MyButton1(1)");
  EXPECT_THAT(screen.log, ElementsAre("MouseOver 1", "GotFocus 1", "Click 1"));

  screen.log.clear();
  user->press("MyButton1(1)");
  user->moveTo("MyButton1(2)");
  user->release("MyButton1(2)");
  EXPECT_THAT(screen.log, testing::Not(testing::Contains(testing::StartsWith("Click"))));

  screen.log.clear();
  for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
    screen.log.clear();
    user->key(key);
    EXPECT_THAT(screen.log, ElementsAre("Click 1"));
  }
  user->key(Qt::Key_X);
  QTest::mouseClick(&user->control("MyButton1(1)"), Qt::RightButton);
  EXPECT_EQ(screen.log.size(), 1U);
}

/// A modal screen.
class Notice : public forms::Form {
 public:
  Notice() : Form({.name = "Notice", .width = 1500, .height = 1500}) {}
};

TEST_F(Button, AHeldKeyboardKeyIsOneClickAndIsIgnoredAfterAModalScreen) {
  QWindow* window = user->window().windowHandle();
  // The display system reports a held key by presses without releases.
  for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return}) {
    screen.log.clear();
    for (int repeat = 0; repeat < 3; ++repeat) QTest::keyPress(window, key);
    EXPECT_THAT(screen.log, ElementsAre());
    QTest::keyRelease(window, key);
    EXPECT_THAT(screen.log, ElementsAre("Click 0"));
  }
  screen.log.clear();
  QTest::keyPress(window, Qt::Key_Space);
  user->focus("MyButton1(1)");
  QTest::keyPress(window, Qt::Key_Space);
  QTest::keyRelease(window, Qt::Key_Space);
  EXPECT_THAT(screen.log, ElementsAre("GotFocus 1"));

  screen.log.clear();
  screen.keys(1).Click = [&] {
    screen.log.push_back("Click 1");
    Notice notice;
    support::soon([&] {
      const support::WindowDriver driver("Notice");
      QTest::keyPress(driver.window().windowHandle(), Qt::Key_Space);
      QTest::keyPress(driver.window().windowHandle(), Qt::Key_Right);
      notice.Unload();
    });
    notice.ShowModal();
  };
  user->click("MyButton1(1)");
  user->focus("MyButton1(1)");
  const auto clicks = [&] { return std::ranges::count(screen.log, "Click 1"); };
  EXPECT_EQ(clicks(), 1);
  for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Right}) {
    QTest::keyPress(window, key);
    QTest::keyRelease(window, key);
  }
  support::settle();
  EXPECT_EQ(clicks(), 1);
  EXPECT_TRUE(user->hasFocus("MyButton1(1)"));
  screen.keys(1).Click = [&] { screen.log.push_back("Click 1"); };
  user->key(Qt::Key_Space);
  EXPECT_EQ(clicks(), 2);
  user->key(Qt::Key_Right);
  EXPECT_TRUE(user->hasFocus("MyButton1(2)"));
}

TEST_F(Button, ArrowKeysMoveTheFocusByThePositionsOfTheKeys) {
  const auto after = [&](Qt::Key arrow) {
    user->key(arrow);
    for (std::int16_t i = 0; i < screen.keys.count(); ++i)
      if (user->hasFocus("MyButton1(" + std::to_string(i) + ")")) return int{i};
    return -1;
  };
  EXPECT_EQ(after(Qt::Key_Left), 0);
  EXPECT_EQ(after(Qt::Key_Right), 1);
  EXPECT_EQ(after(Qt::Key_Down), 4);
  EXPECT_EQ(after(Qt::Key_Right), 4);
  EXPECT_EQ(after(Qt::Key_Left), 3);
  EXPECT_EQ(after(Qt::Key_Up), 0);
  screen.keys(1).Visible(false);
  EXPECT_EQ(after(Qt::Key_Right), 2);
  EXPECT_EQ(after(Qt::Key_Down), 2);
}

TEST_F(Button, ADoublePressIsOneClickThenOneDoubleClick) {
  user->moveTo("MyButton1(0)");
  screen.log.clear();
  user->doubleClick("MyButton1(0)");
  EXPECT_THAT(screen.log, ElementsAre("Click 0", "DblClick 0"));
  user->click("MyButton1(0)");
  EXPECT_THAT(screen.log, ElementsAre("Click 0", "DblClick 0", "Click 0"));
}

TEST_F(Button, AFailureToFetchADroppedTextIsReported) {
  class Huge : public QMimeData {
   public:
    bool hasFormat(const QString&) const override { return true; }
    QStringList formats() const override { return {"text/plain"}; }

   protected:
    QVariant retrieveData(const QString&, QMetaType) const override { throw std::bad_alloc(); }
  } text;
  screen.keys(0).oledropmode(1);
  screen.keys(0).OLEDragDrop = [](forms::DataObject& data, auto&&...) {
    data.GetData(forms::kTextFormat);
  };
  user->drop("MyButton1(0)", text, Qt::MoveAction);
  ASSERT_EQ(host.failures.size(), 1U);
  EXPECT_EQ(host.failures[0].number(), 7);
}

TEST_F(Button, PaintsEachStateInItsOwnColour) {
  MyButton& key = screen.keys(2);
  key.backcolor(forms::kWhite);
  key.backcolorover(kGreen);
  key.backcolorfocus(kBlue);
  key.backcolordown(kRed);
  EXPECT_EQ(fill("MyButton1(2)"), 0xFFFFFFFF);
  user->moveTo("MyButton1(2)");
  EXPECT_EQ(fill("MyButton1(2)"), 0xFF00FF00);
  user->press("MyButton1(2)");
  EXPECT_EQ(fill("MyButton1(2)"), 0xFFFF0000);
  user->release("MyButton1(2)");
  user->moveTo("MyButton1(0)");
  EXPECT_EQ(fill("MyButton1(2)"), 0xFF0000FF);
}

TEST_F(Button, ShowsTheFocusOnAnyColourUnlessShowFocusIsOff) {
  for (const forms::Colour colour : {forms::kWhite, forms::kBlack, kBlue, 0xC68C30, 0x808080}) {
    const auto focusMark = [&](std::int16_t index, const std::string& name) {
      screen.keys(index).backcolor(colour);
      screen.keys(index).backcolorfocus(colour);
      user->focus("MyButton1(2)");
      const QImage without = picture(name);
      user->focus(name);
      return changedPixels(without, picture(name));
    };
    EXPECT_GT(focusMark(0, "MyButton1(0)"), 250) << colour;
    EXPECT_EQ(focusMark(1, "MyButton1(1)"), 0) << colour;
  }
}

TEST_F(Button, ACaptionIsPaintedAsPlainTextInsideItsKey) {
  const auto ink = [&](std::u16string_view caption) {
    screen.keys(2).backcolor(forms::kWhite);
    screen.keys(2).caption(caption);
    const QImage key = picture("MyButton1(2)");
    int dark = 0;
    for (int y = 4; y < key.height() - 4; ++y)
      for (int x = 4; x < key.width() - 4; ++x) dark += key.pixelColor(x, y).lightness() < 128;
    return dark;
  };
  EXPECT_EQ(ink(u""), 0);
  EXPECT_GT(ink(u"Fish & Chips"), ink(u"Fish  Chips"));
  EXPECT_GT(ink(u"<b>Tea</b>"), ink(u"Tea"));

  screen.keys(2).caption(u"");
  const auto frame = [&] {
    const QImage key = picture("MyButton1(2)");
    return std::pair(key.copy(0, 0, key.width(), 2), key.copy(0, 0, 2, key.height()));
  };
  const auto empty = frame();
  screen.keys(2).caption(std::u16string(400, u'W'));
  EXPECT_EQ(frame(), empty);
  // A very long caption doesn't take long to lay out.
  const QImage filled = picture("MyButton1(2)");
  screen.keys(2).caption(std::u16string(1'000'000, u'W'));
  EXPECT_EQ(picture("MyButton1(2)"), filled);
  screen.keys(2).caption(u"Sourdough and rosemary loaf, sliced, large, from the bakery next door");
  EXPECT_EQ(frame(), empty);
}

TEST_F(Button, ADragOverItIsMarkedOnAnyColourUntilItLeaves) {
  screen.keys(1).oledropmode(1);
  QMimeData text;
  text.setText("Tea");
  for (const forms::Colour colour : {forms::kWhite, forms::kBlack, kRed, kBlue, 0xC68C30}) {
    screen.keys(1).backcolor(colour);
    const QImage without = picture("MyButton1(1)");
    QDragEnterEvent enter({40, 30}, Qt::MoveAction, &text, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&user->control("MyButton1(1)"), &enter);
    EXPECT_GT(changedPixels(without, picture("MyButton1(1)")), 500) << colour;
    QDragLeaveEvent leave;
    QApplication::sendEvent(&user->control("MyButton1(1)"), &leave);
    EXPECT_EQ(picture("MyButton1(1)"), without);
  }
}

TEST_F(Button, SystemTextStaysReadableOnAWhiteKeyInADarkTheme) {
  const QPalette light = QApplication::palette();
  QPalette dark(QColor(0x20, 0x20, 0x24));
  QApplication::setPalette(dark);
  support::settle();
  screen.keys(2).caption(u"Tea");
  screen.keys(2).backcolor(forms::kWhite);
  const auto extremes = [&] {
    const QImage key = picture("MyButton1(2)");
    int darkest = 255;
    int lightest = 0;
    for (int y = 6; y < key.height() - 6; ++y)
      for (int x = 6; x < key.width() - 6; ++x) {
        darkest = std::min(darkest, key.pixelColor(x, y).lightness());
        lightest = std::max(lightest, key.pixelColor(x, y).lightness());
      }
    return std::pair(darkest, lightest);
  };
  EXPECT_LT(extremes().first, 60);
  EXPECT_EQ(extremes().second, 255);
  screen.keys(2).backcolor(forms::kButtonFace);
  EXPECT_EQ(fill("MyButton1(2)"), QApplication::palette().color(QPalette::Button).rgb());
  EXPECT_GT(extremes().second, 180);
  EXPECT_EQ(screen.keys(2).backcolor(), forms::kButtonFace);
  QApplication::setPalette(light);
}

// The tests with real windows read the keys' names, positions, colours and states.
TEST_F(Button, IsPressedByScreenReadersUnlessAModalScreenBlocksIt) {
  QAccessibleInterface* reader =
      QAccessible::queryAccessibleInterface(&user->control("MyButton1(4)"));
  screen.keys(4).backcolor(0xB4E1FF);
  screen.keys(4).Top(0);
  screen.keys(4).Left(4050);
  EXPECT_EQ(reader->text(QAccessible::Description).toStdString(),
            "Key 4, row 1, column 4, colour #FFE1B4");
  QAccessibleActionInterface* actions = reader->actionInterface();
  actions->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(support::waitUntil([&] { return !screen.log.empty(); }));
  actions->doAction("Double click");
  support::settle();
  EXPECT_THAT(screen.log, ElementsAre("Click 4", "DblClick 4"));
  Notice notice;
  support::soon([&] {
    actions->doAction(QAccessibleActionInterface::pressAction());
    support::soon([&] { notice.Unload(); });
  });
  notice.ShowModal();
  support::settle();
  EXPECT_EQ(std::ranges::count(screen.log, "Click 4"), 1);
}

}  // namespace
