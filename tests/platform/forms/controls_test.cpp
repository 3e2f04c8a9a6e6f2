// The standard controls: values and their nested events, user actions, names for screen readers.

#include <gmock/gmock.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QListView>
#include <QPointingDevice>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>
#include <algorithm>

#include "platform/files/ByteFile.h"
#include "platform/forms/CheckBox.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/DataObject.h"
#include "platform/forms/Form.h"
#include "platform/forms/Label.h"
#include "platform/forms/ListBox.h"
#include "platform/forms/MSHFlexGrid.h"
#include "platform/forms/TextBox.h"
#include "platform/runtime/RunTimeError.h"
#include "support/Designs.h"
#include "support/FileFaults.h"
#include "support/ProgramFolder.h"
#include "support/TestHost.h"
#include "support/WindowDriver.h"

namespace {

using support::errorNumberOf;
using support::WindowDriver;
using testing::ElementsAre;

/// A control on line `line`; lines are 450 twips apart.
forms::Design row(const char* name, int line, std::u16string_view caption = {}, int height = 360) {
  auto design = support::designOf(name, 150, 150 + 450 * line, 3000, height, line);
  design.caption = caption;
  return design;
}

forms::Design tall(const char* name, int line) {
  return row(name, line, {}, 1500);
}

class ControlScreen : public forms::Form {
 public:
  ControlScreen()
      : Form({.name = "ControlScreen", .width = 6000, .height = 6000}),
        tick(*this, row("tick", 0, u"Salt & <b>pepper</b>")),
        label(*this, row("label", 1, u"Level")),
        box(*this, row("box", 2)),
        text(*this, row("text", 4), 15),
        list(*this, tall("list", 6)),
        table(*this, row("table", 12), 3, 2) {
    tick.Click = [this] { log.push_back("tick " + std::to_string(tick.Value())); };
    box.Click = [this] { log.push_back("box " + std::to_string(box.ListIndex())); };
    list.DblClick = [this] { log.push_back("DblClick " + std::to_string(list.ListIndex())); };
    list.MouseDown = [this](std::int16_t button, std::int16_t shift, float x, float y) {
      log.push_back("MouseDown " + std::to_string(button) + " on " +
                    std::to_string(list.ListIndex()));
      pressShift = shift;
      pressX = x;
      pressY = y;
      list.OLEDrag();
    };
    list.OLEStartDrag = [this](forms::DataObject& data, std::int32_t& effects) {
      effects = forms::kDropMove;
      EXPECT_FALSE(data.GetFormat(forms::kTextFormat));
      data.SetData(list.Text());
      EXPECT_TRUE(data.GetFormat(forms::kTextFormat));
      dragged.push_back(data.GetData(forms::kTextFormat));
    };
    for (const auto* entry : {u"1", u"2", u"3"}) box.AddItem(entry);
    for (int i = 0; i < 200; ++i)
      list.AddItem(u"Entry " + std::u16string(100, u' ') + std::u16string(1, char16_t(u'A' + i)));
  }

  forms::CheckBox tick;
  forms::Label label;
  forms::ComboBox box;
  forms::TextBox text;
  forms::ListBox list;
  MSHierarchicalFlexGridLib::MSHFlexGrid table;
  std::vector<std::string> log;
  std::vector<std::u16string> dragged;
  std::int16_t pressShift = -1;
  float pressX = 0;
  float pressY = 0;
};

class Controls : public testing::Test {
 protected:
  Controls() {
    screen.Show();
    user.emplace("ControlScreen");
  }

  support::TestHost host;
  ControlScreen screen;
  std::optional<WindowDriver> user;
};

TEST_F(Controls, ACheckBoxRaisesClickWhenCodeOrTheUserChangesItsValue) {
  screen.tick.Value(0);
  EXPECT_THAT(screen.log, ElementsAre());
  screen.tick.Value(1);
  user->click("tick");
  user->focus("tick");
  user->key(Qt::Key_Space);
  screen.tick.Value(2);
  user->click("tick");
  EXPECT_THAT(screen.log, ElementsAre("tick 1", "tick 0", "tick 1", "tick 2", "tick 0"));
  EXPECT_EQ(errorNumberOf([&] { screen.tick.Value(3); }), 380);
  EXPECT_EQ(errorNumberOf([&] { screen.tick.Value(-1); }), 380);
  EXPECT_EQ(screen.tick.Value(), 0);
}

TEST_F(Controls, ACheckBoxIsRepaintedBeforeItsHandlerRuns) {
  struct Paints : QObject {
    bool eventFilter(QObject*, QEvent* event) override {
      count += event->type() == QEvent::Paint ? 1 : 0;
      return false;
    }
    int count = 0;
  } paints;
  user->control("tick").installEventFilter(&paints);
  bool painted = false;
  screen.tick.Click = [&] { painted = std::exchange(paints.count, 0) > 0; };
  user->moveTo("tick");
  user->press("tick");
  paints.count = 0;
  user->release("tick");
  EXPECT_TRUE(painted);
}

TEST_F(Controls, TheWaitCursorShowsWhileAHandlerReadsForLong) {
  const support::ProgramFolder folder;
  folder.write("stock", "bytes");
  const files::ByteFile file(folder.path() / "stock", files::ByteFile::Access::ReadOnly);
  const auto waitsAtARead = [&] {
    std::uint8_t byte = 0;
    file.readAt(0, {&byte, 1});
    const QCursor* pointer = QGuiApplication::overrideCursor();
    return pointer != nullptr && pointer->shape() == Qt::WaitCursor;
  };
  std::vector<bool> waited;
  screen.tick.Click = [&] {
    waited.push_back(waitsAtARead());
    QTest::qSleep(320);
    waited.push_back(waitsAtARead());
  };
  user->click("tick");
  EXPECT_THAT(waited, ElementsAre(false, true));
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_FALSE(waitsAtARead());
}

TEST_F(Controls, ATextBoxTakesOneLineOfCompleteCharactersAndNoDrop) {
  user->focus("text");
  QApplication::clipboard()->setText(QString::fromUtf16(u"a\0b\nc\t", 6) + "1234567\r" +
                                     QString::fromUtf16(u"\U0001F600"));
  QTest::keyClick(user->window().windowHandle(), Qt::Key_V, Qt::ControlModifier);
  // 14 units: only half of the emoji would fit into the limit of 15.
  EXPECT_EQ(screen.text.Text(), u"a b c 1234567 ");
  EXPECT_FALSE(user->drop("text", u"Coffee"));
  screen.text.Text(u"Breakfast and brunch");
  EXPECT_EQ(screen.text.Text(), u"Breakfast and b");
}

TEST_F(Controls, AFailureInANestedHandlerReachesTheSettersCaller) {
  screen.tick.Click =
      screen.box.Click = [] { throw runtime::RunTimeError(runtime::ErrorNumber::TypeMismatch); };
  EXPECT_EQ(errorNumberOf([&] { screen.tick.Value(1); }), 13);
  EXPECT_EQ(errorNumberOf([&] { screen.box.ListIndex(0); }), 13);
  EXPECT_TRUE(host.failures.empty());
  user->click("tick");
  ASSERT_EQ(host.failures.size(), 1U);
  EXPECT_EQ(host.endStatus, 1);
}

TEST_F(Controls, ChoosingInADropDownRaisesClickEvenForTheEntryAlreadyChosen) {
  EXPECT_EQ(screen.box.ListIndex(), -1);
  EXPECT_EQ(screen.box.Text(), u"");
  screen.box.ListIndex(0);
  screen.box.ListIndex(0);
  user->pick("box", 2);
  user->pick("box", 2);
  EXPECT_EQ(screen.box.Text(), u"3");
  screen.box.AddItem(u"4");
  EXPECT_THAT(screen.log, ElementsAre("box 0", "box 0", "box 2", "box 2"));
  EXPECT_EQ(errorNumberOf([&] { screen.box.ListIndex(4); }), 380);

  QWheelEvent turn({5, 5}, user->control("box").mapToGlobal(QPointF(5, 5)), {}, {0, -120},
                   Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&user->control("box"), &turn);
  EXPECT_EQ(screen.box.ListIndex(), 2);
  EXPECT_EQ(screen.log.size(), 4U);
}

TEST_F(Controls, ALeftPressSelectsTheRowThenRaisesMouseDownAndStartsTheDrag) {
  user->clickRow("list", 2);
  EXPECT_THAT(screen.log, ElementsAre("MouseDown 1 on 2"));
  EXPECT_THAT(screen.dragged, ElementsAre(u"Entry " + std::u16string(100, u' ') + u"C"));
  EXPECT_EQ(screen.pressShift, 0);
  EXPECT_NEAR(screen.pressX, 150, 45);
  EXPECT_GT(screen.pressY, 600);

  user->clickRow("list", 4, true);
  EXPECT_EQ(screen.log.back(), "MouseDown 2 on 2");
  EXPECT_EQ(screen.dragged.size(), 2U);
}

TEST_F(Controls, ADoubleClickOnTheListIsTwoPressesAndOneDoubleClick) {
  user->doubleClickRow("list", 3);
  EXPECT_THAT(screen.log, ElementsAre("MouseDown 1 on 3", "MouseDown 1 on 3", "DblClick 3"));
  EXPECT_EQ(screen.dragged.size(), 2U);
}

TEST_F(Controls, ASecondPressThatDragsTheRowOffTheListIsNoDoubleClick) {
  QWindow* window = user->window().windowHandle();
  const auto& list = static_cast<QListView&>(user->control("list"));
  const auto pressTwiceAndMoveTo = [&](QPoint onList) {
    screen.log.clear();
    user->clickRow("list", 3);
    QTest::lastMouseTimestamp -= QTest::mouseDoubleClickInterval;
    const int middle = list.visualRect(list.model()->index(3, 0)).center().y();
    const QPoint row = list.viewport()->mapTo(&user->window(), QPoint(10, middle));
    const QPoint to = list.mapTo(&user->window(), onList);
    support::soon([&] {
      QCursor::setPos(list.mapToGlobal(onList));
      QTest::mouseMove(window, to);  // with the offscreen platform the drag ends at once
      QTest::mouseRelease(window, Qt::LeftButton, {}, to);
    });
    QTest::mousePress(window, Qt::LeftButton, {}, row);
    support::settle();
    return std::ranges::count_if(
        screen.log, [](const std::string& event) { return event.starts_with("DblClick"); });
  };
  const QPoint smallMove(23, 26);
  const QPoint outside(list.width() + 40, 20);
  EXPECT_EQ(pressTwiceAndMoveTo(smallMove), 1);
  EXPECT_EQ(pressTwiceAndMoveTo(outside), 0);
  EXPECT_EQ(pressTwiceAndMoveTo(smallMove), 1);
}

/// A finger on the list, in pixels from its corner.
class FingerOnList : public Controls {
 protected:
  void down(int x, int y) {
    touch([&](auto& events, QPoint at) { events.press(0, at, window()); }, x, y);
  }
  void move(int x, int y) {
    touch([&](auto& events, QPoint at) { events.move(0, at, window()); }, x, y);
  }
  void up(int x, int y) {
    touch([&](auto& events, QPoint at) { events.release(0, at, window()); }, x, y);
  }
  void swipe(int fromY, int toY) {
    const int step = fromY < toY ? 10 : -10;
    down(30, fromY);
    for (int y = fromY + step; y != toY; y += step) {
      QTest::qWait(5);
      move(30, y);
    }
    up(30, toY);
  }
  int scrolled() const {
    return static_cast<QListView&>(user->control("list")).verticalScrollBar()->value();
  }

 private:
  QWindow* window() const { return user->window().windowHandle(); }
  template <class Act>
  void touch(Act act, int x, int y) {
    auto events = QTest::touchEvent(window(), screenDevice());
    act(events, user->control("list").mapTo(&user->window(), QPoint(x, y)));
    events.commit();
    support::settle();
  }
  static QPointingDevice* screenDevice() {
    static QPointingDevice* const device = QTest::createTouchDevice();
    return device;
  }
};

TEST_F(FingerOnList, ASwipeScrollsAndScrollingContinuesAfterIt) {
  swipe(90, 20);
  const int lifted = scrolled();
  EXPECT_GT(lifted, 30);
  EXPECT_TRUE(support::waitUntil([&] { return scrolled() > lifted + 20; }));
  EXPECT_THAT(screen.log, ElementsAre());
  EXPECT_EQ(screen.list.ListIndex(), -1);
  // A touch stops it, and is no tap.
  down(30, 40);
  const int stopped = scrolled();
  QTest::qWait(50);
  EXPECT_EQ(scrolled(), stopped);
  up(30, 40);
  EXPECT_THAT(screen.log, ElementsAre());
}

TEST_F(FingerOnList, OneTapIsAPressAndTwoTapsAreADoubleClick) {
  down(30, 40);
  EXPECT_THAT(screen.log, ElementsAre());
  up(31, 42);
  EXPECT_THAT(screen.log, ElementsAre("MouseDown 1 on 1"));
  down(30, 40);
  up(30, 40);
  EXPECT_THAT(screen.log, ElementsAre("MouseDown 1 on 1", "MouseDown 1 on 1", "DblClick 1"));
}

TEST_F(FingerOnList, DragsByASidewaysMoveOrAHold) {
  down(30, 40);
  move(60, 44);
  EXPECT_THAT(screen.log, ElementsAre("MouseDown 1 on 1"));
  EXPECT_EQ(screen.dragged.size(), 1U);
  up(60, 44);
  EXPECT_EQ(screen.log.size(), 1U);

  down(30, 70);
  EXPECT_EQ(screen.log.size(), 1U);
  EXPECT_TRUE(support::waitUntil([&] { return screen.log.size() == 2; }, 3000));
  EXPECT_EQ(screen.log.back(), "MouseDown 1 on 2");
  up(30, 70);
  EXPECT_EQ(screen.log.size(), 2U);
  EXPECT_EQ(scrolled(), 0);
}

TEST_F(Controls, RowsAndScrollBarsAreAsLargeAsAFingerNeeds) {
  const auto& list = static_cast<QListView&>(user->control("list"));
  EXPECT_EQ(list.visualRect(list.model()->index(0, 0)).height(), 29);
  EXPECT_EQ(list.verticalScrollBar()->width(), 24);
  const auto& box = static_cast<QComboBox&>(user->control("box"));
  EXPECT_EQ(box.view()->sizeHintForRow(0), 29);
}

TEST_F(Controls, AnotherButtonNeitherStartsNorEndsADrag) {
  QWindow* window = user->window().windowHandle();
  const QPoint at = user->control("list").mapTo(&user->window(), QPoint(20, 20));
  bool dragEnded = false;
  bool outlastedRightButton = false;
  // The left button's press runs the event loop until its release.
  support::soon([&] { QTest::mousePress(window, Qt::RightButton, {}, at); });
  support::soon([&] { QTest::mouseRelease(window, Qt::RightButton, {}, at); }, 20);
  support::soon(
      [&] {
        outlastedRightButton = !dragEnded;
        QTest::mouseRelease(window, Qt::LeftButton, {}, at);
      },
      40);
  QTest::mousePress(window, Qt::LeftButton, {}, at);
  dragEnded = true;
  support::settle();
  EXPECT_TRUE(outlastedRightButton);
  EXPECT_EQ(screen.dragged.size(), 1U);
  EXPECT_THAT(screen.log, ElementsAre("MouseDown 1 on 0"));
}

TEST_F(Controls, BelowTheLastRowAPressSelectsNothing) {
  screen.list.Clear();
  screen.list.AddItem(u"first");
  screen.list.AddItem(u"last");
  user->focus("list");
  EXPECT_EQ(screen.list.ListIndex(), -1);
  user->doubleClickRow("list", 5);
  EXPECT_THAT(screen.log, ElementsAre("MouseDown 1 on -1", "MouseDown 1 on -1", "DblClick -1"));
  EXPECT_THAT(screen.dragged, ElementsAre(u"", u""));
  user->key(Qt::Key_Down);
  EXPECT_EQ(screen.list.Text(), u"first");
  user->doubleClickRow("list", 5);
  EXPECT_EQ(screen.log.back(), "DblClick 0");
}

TEST_F(Controls, TheListKeepsFortyThousandEntriesInFull) {
  screen.list.Clear();
  std::u16string entry(130, u' ');
  for (int i = 0; i < 40000; ++i) {
    entry[0] = static_cast<char16_t>(u'a' + i % 26);
    screen.list.AddItem(entry);
  }
  EXPECT_EQ(screen.list.ListCount(), 40000);
  screen.list.ListIndex(39999);
  EXPECT_EQ(screen.list.Text(), u"l" + std::u16string(129, u' '));
  EXPECT_EQ(screen.list.List(40000), u"");
  EXPECT_EQ(errorNumberOf([&] { screen.list.ListIndex(40000); }), 380);
  user->clickRow("list", 39998);
  EXPECT_EQ(screen.list.ListIndex(), 39998);
  EXPECT_EQ(user->entries("list").size(), 40000U);
  const auto& view = static_cast<QListView&>(user->control("list"));
  EXPECT_EQ(view.horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
  EXPECT_EQ(view.visualRect(view.model()->index(0, 0)).width(), view.viewport()->width());
}

TEST_F(Controls, TheHiddenTableKeepsTextsAndRejectsCellsOutside) {
  screen.table.TextMatrix(2, 1, u"42");
  screen.table.Cols(3);
  EXPECT_EQ(screen.table.TextMatrix(2, 1), u"42");
  EXPECT_EQ(screen.table.TextMatrix(2, 2), u"");
  screen.table.Cols(2);
  EXPECT_EQ(errorNumberOf([&] { screen.table.TextMatrix(2, 2); }), 9);
  EXPECT_EQ(errorNumberOf([&] { screen.table.TextMatrix(3, 0, u"x"); }), 9);
  EXPECT_EQ(errorNumberOf([&] { screen.table.TextMatrix(-1, 0); }), 9);
}

/// A list whose entries begin with the id.
class ProductScreen : public forms::Form {
 public:
  ProductScreen()
      : Form({.name = "ProductScreen", .width = 6000, .height = 6000}),
        list(*this, tall("list", 0), {.name = {.offset = 10}, .id = {.length = 10}}) {
    list.AddItem(u"7          Tea ");
    list.AddItem(u"1042       Tea ");
  }
  forms::ListBox list;
};

class Products : public testing::Test {
 protected:
  Products() {
    screen.Show();
    user.emplace("ProductScreen");
  }

  support::TestHost host;
  ProductScreen screen;
  std::optional<WindowDriver> user;
};

TEST_F(Products, NamesThatFollowAnIdAreAlignedInOneColumn) {
  const auto& list = static_cast<QListView&>(user->control("list"));
  const auto row = [&](int index) {
    QRect area = list.visualRect(list.model()->index(index, 0));
    area.setLeft(50);
    return list.viewport()->grab(area).toImage();
  };
  EXPECT_EQ(row(0), row(1));
  QImage empty = row(0);
  empty.fill(empty.pixelColor(0, 0));
  EXPECT_NE(row(0), empty);
}

TEST_F(Products, ARowThatIsGoneIsNoLongerReadNorPressed) {
  QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&user->control("list"));
  QAccessibleInterface* row = list->child(1);
  EXPECT_EQ(row->text(QAccessible::Description), "1042");
  EXPECT_EQ(list->childAt(row->rect().center().x(), row->rect().center().y()), row);
  screen.list.Clear();
  EXPECT_FALSE(row->isValid());
  EXPECT_EQ(row->text(QAccessible::Name), "");
  row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  support::settle();
}

}  // namespace
