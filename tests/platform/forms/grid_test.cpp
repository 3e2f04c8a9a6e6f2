// The grid: typing, moving, drop-down and check cells, for a user and for the screen's code.

#include <gmock/gmock.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QImage>
#include <QTableView>
#include <QTest>
#include <QWheelEvent>
#include <optional>

#include "platform/forms/FlexCellGrid.h"
#include "platform/forms/Form.h"
#include "platform/forms/MyCommandButton.h"
#include "platform/runtime/RunTimeError.h"
#include "support/Designs.h"
#include "support/FileFaults.h"
#include "support/TestHost.h"
#include "support/WindowDriver.h"

namespace {

using FlexCell::CellType;
using support::WindowDriver;
using testing::ElementsAre;

constexpr int kLabels = 1;
constexpr int kValues = 2;
constexpr int kName = 1;
constexpr int kPrice = 2;
constexpr int kDepartment = 3;
constexpr int kFirstCheck = 4;
constexpr int kLast = 5;
constexpr forms::Colour kAqua = 0xFFFF80;
constexpr forms::Colour kGrey = 0x808080;

FlexCell::GridDesign gridDesign() {
  FlexCell::GridDesign design;
  design.control = support::designOf("Grid1", 0, 600, 9000, 3000, 0);
  design.control.backColour = forms::kWindowBackground;
  design.control.foreColour = forms::kWindowText;
  design.rows = kLast + 1;
  design.cols = 3;
  design.defaultRowHeight = 35;
  design.extendLastCol = true;
  design.enterKeyMoveTo = 1;
  design.backColourActiveCell = kAqua;
  design.borderColour = kGrey;
  return design;
}

std::u16string item(std::u16string_view description, std::u16string_view id) {
  return std::u16string(description).append(1000, u' ').append(u",").append(id);
}

/// A form with a grid: name, price, department and two check cells.
class GridScreen : public forms::Form {
 public:
  GridScreen()
      : Form({.name = "GridScreen", .width = 9000, .height = 4000}),
        Grid1(*this, gridDesign()),
        cmdSave(*this,
                support::designOf<MyCommandButton::ButtonDesign>("cmdSave", 0, 0, 1500, 500, 1)) {
    constexpr std::u16string_view kCaptions[] = {u"Name", u"Price", u"Department", u"Printer",
                                                 u"Open price"};
    for (int row = kName; row <= kLast; ++row) Grid1.Cell(row, kLabels).Text(kCaptions[row - 1]);
    Grid1.Column(kLabels).Locked(true);
    Grid1.Column(kLabels).Width(150);
    Grid1.Column(kValues).Kind(CellType::ComboBox);
    Grid1.Column(kValues).MaxLength(50);
    Grid1.Cell(kName, kValues).Kind(CellType::Text);
    Grid1.Cell(kPrice, kValues).Kind(CellType::Text);
    for (int row = kFirstCheck; row <= kLast; ++row) {
      Grid1.Cell(row, kValues).Kind(CellType::CheckBox);
      Grid1.Cell(row, kValues).Text(u"0");
    }
    Grid1.RowHeight(0, 0);
    Grid1.Cell(kName, kValues).SetFocus();
    Grid1.Click = [this] {
      const FlexCell::ActiveCell at = Grid1.ActiveCell();
      clicks.emplace_back(at.Row, at.Col);
      if (at.Col == kLabels) Grid1.Cell(at.Row, kValues).SetFocus();
    };
    Grid1.ComboClick = [this](std::int16_t) { picked.push_back(text(kDepartment)); };
  }

  std::u16string text(int row) { return Grid1.Cell(row, kValues).Text(); }
  std::pair<int, int> active() { return {Grid1.ActiveCell().Row, Grid1.ActiveCell().Col}; }
  void listDepartments() {
    Grid1.ComboBox(kValues).AddItem(item(u"Bakery", u"1"));
    Grid1.ComboBox(kValues).AddItem(item(u"Cakes, Pies, Pastries", u"2"));
    Grid1.ComboBox(kValues).AddItem(item(u" Mind the gap  ,here", u"3"));
    Grid1.ComboBox(kValues).AddItem(u"Plain   , without a hidden part");
    Grid1.ComboBox(kValues).AddItem(item(std::u16string(60, u'x'), u"4"));
    Grid1.ComboBox(kValues).AddItem(item(u"", u"5"));
  }

  FlexCell::Grid Grid1;
  MyCommandButton::MyButton cmdSave;
  std::vector<std::pair<int, int>> clicks;
  std::vector<std::u16string> picked;
};

class Grid : public testing::Test {
 protected:
  Grid() {
    screen.listDepartments();
    screen.Show();
    user.emplace("GridScreen");
    support::waitUntil([this] { return user->window().isActiveWindow(); });
    support::settle();
  }

  QTableView& table() { return static_cast<QTableView&>(user->control("Grid1")); }
  QComboBox& dropDown() { return *table().findChild<QComboBox*>(); }
  bool listIsOpen() { return dropDown().view()->isVisible(); }

  QPoint middle(int row, int column) {
    const QPoint at = table().visualRect(table().model()->index(row, column)).center();
    return table().viewport()->mapTo(&user->window(), at);
  }
  void click(int row, int column) {
    QTest::mouseClick(user->window().windowHandle(), Qt::LeftButton, {}, middle(row, column));
    support::settle();
  }
  /// Picks in the open list with the mouse.
  void pick(int entry) {
    QAbstractItemView* list = dropDown().view();
    const QPoint at = list->visualRect(list->model()->index(entry, 0)).center();
    QWidget* popup = list->window();
    const QPoint onPopup = list->viewport()->mapTo(popup, at);
    QTest::mouseMove(popup->windowHandle(), onPopup);
    QTest::mouseClick(popup->windowHandle(), Qt::LeftButton, {}, onPopup);
    support::settle();
  }
  void paste(const QString& text) {
    QApplication::clipboard()->setText(text);
    QTest::keyClick(user->window().windowHandle(), Qt::Key_V, Qt::ControlModifier);
    support::settle();
  }

  support::TestHost host;
  GridScreen screen;
  std::optional<WindowDriver> user;
};

using Cell = std::pair<int, int>;

TEST_F(Grid, TypingGoesIntoTheActiveCellAtOnceAndEnterMovesDown) {
  user->type(u"Latte, 'large' ");
  EXPECT_EQ(screen.text(kName), u"Latte, 'large' ");
  user->key(Qt::Key_Return);
  user->type(u"2");
  user->type(u".50");
  EXPECT_EQ(screen.text(kPrice), u"2.50");
  EXPECT_EQ(screen.text(kName), u"Latte, 'large' ");
  for (int presses = 0; presses < 6; ++presses) user->key(Qt::Key_Enter);
  EXPECT_EQ(screen.active(), Cell(kLast, kValues));
  EXPECT_FALSE(listIsOpen());

  // In a cell that becomes active again, typing replaces the text, unless code has set it since.
  user->key(Qt::Key_Home);
  user->type(u"Tea");
  EXPECT_EQ(screen.text(kName), u"Tea");
  screen.Grid1.Cell(kName, kValues).Text(u"Cocoa");
  user->type(u"!");
  EXPECT_EQ(screen.text(kName), u"Cocoa!");
}

TEST_F(Grid, StopsTypingAndPastingAtTheColumnsLength) {
  user->type(std::u16string(51, u'n'));
  EXPECT_EQ(screen.text(kName), std::u16string(50, u'n'));
  user->key(Qt::Key_Down);
  user->type(u"12");
  paste(QString(60, '3'));
  EXPECT_EQ(screen.text(kPrice), u"12" + std::u16string(48, u'3'));
  user->key(Qt::Key_Up);
  paste("two\r\nlines");
  EXPECT_EQ(screen.text(kName), u"two  lines");

  // The limit applies only to input by the user.
  screen.Grid1.Cell(kPrice, kValues).Text(std::u16string(70, u'4'));
  EXPECT_EQ(screen.text(kPrice).size(), 70U);
  screen.Grid1.Column(kValues).MaxLength(3);
  user->type(u"Latte");
  EXPECT_EQ(screen.text(kName), u"two  lines");
}

TEST_F(Grid, TheCaretStaysWhereTheUserTypesAndUndoStaysInItsCell) {
  const auto undo = [&] {
    QTest::keyClick(user->window().windowHandle(), Qt::Key_Z, Qt::ControlModifier);
    support::settle();
  };
  user->type(u"abcdef");
  for (int presses = 0; presses < 4; ++presses) user->key(Qt::Key_Left);
  user->type(u"XYZ");
  EXPECT_EQ(screen.text(kName), u"abXYZcdef");
  undo();
  EXPECT_EQ(screen.text(kName), u"abcdef");
  undo();
  EXPECT_EQ(screen.text(kName), u"");
  for (const char* changed : {"X\nY", "X\u03A9Y", "e\u0301"}) {
    user->type(u"ab");
    paste(changed);
    EXPECT_GT(screen.text(kName).size(), 2U);
    undo();
    EXPECT_EQ(screen.text(kName), u"") << changed;
  }
  user->key(Qt::Key_Down);
  undo();
  EXPECT_EQ(screen.text(kPrice), u"");
}

TEST_F(Grid, ACellTakesOneLineOfCharactersThatTheCodePageHas) {
  paste(QString::fromUtf16(u"tab\tnul\0end\u0085", 12));
  EXPECT_EQ(screen.text(kName), u"tab nul end ");
  user->key(Qt::Key_Down);
  paste(QString::fromUtf16(u"Cafe\u0301 \U0001F600 \u03A9 \u2192 \u20AC\u00FF q\u0303"));
  EXPECT_EQ(screen.text(kPrice), u"Caf\u00E9 ? ? ? \u20AC\u00FF q?");

  // A surrogate pair counts as one unit, since it becomes "?". A cell accepts no drops.
  user->key(Qt::Key_Up);
  paste(QString(49, 'n') + QString::fromUtf16(u"\U0001F600"));
  EXPECT_EQ(screen.text(kName), std::u16string(49, u'n') + u"?");
  EXPECT_FALSE(QApplication::focusWidget()->acceptDrops());
}

TEST_F(Grid, TabLeavesTheGridFromAnyKindOfCellAndReturnsToTheSameCell) {
  for (const int row : {kName, kDepartment, kFirstCheck}) {
    screen.Grid1.Cell(row, kValues).SetFocus();
    user->tab();
    EXPECT_TRUE(user->hasFocus("cmdSave")) << row;
    QTest::keyClick(user->window().windowHandle(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(table().isAncestorOf(QApplication::focusWidget()) || table().hasFocus()) << row;
    EXPECT_EQ(screen.active(), Cell(row, kValues));
  }
  screen.Grid1.Cell(kName, kValues).SetFocus();
  user->type(u"Tea");
  EXPECT_EQ(screen.text(kName), u"Tea");

  // Code that moves the active cell leaves the focus where it is.
  user->tab();
  screen.Grid1.Cell(kPrice, kValues).SetFocus();
  EXPECT_TRUE(user->hasFocus("cmdSave"));
}

TEST_F(Grid, ArrowKeysSkipHiddenRowsAndTheLabelColumn) {
  user->key(Qt::Key_Up);
  EXPECT_EQ(screen.active(), Cell(kName, kValues));
  user->key(Qt::Key_PageDown);
  EXPECT_EQ(screen.active(), Cell(kLast, kValues));
  user->key(Qt::Key_Left);
  EXPECT_EQ(screen.active(), Cell(kLast, kValues));
  user->key(Qt::Key_Up);
  user->key(Qt::Key_Up);
  EXPECT_EQ(screen.active(), Cell(kDepartment, kValues));
  screen.Grid1.RowHeight(kPrice, 0);
  user->key(Qt::Key_Up);
  EXPECT_EQ(screen.active(), Cell(kName, kValues));
  EXPECT_TRUE(screen.clicks.empty());
}

TEST_F(Grid, RaisesClickAfterMovingTheActiveCell) {
  click(kPrice, kLabels);
  click(kPrice, kValues);
  click(kName, 0);
  click(kName, kValues);
  EXPECT_THAT(screen.clicks, ElementsAre(Cell(kPrice, kLabels), Cell(kPrice, kValues),
                                         Cell(kName, kLabels), Cell(kName, kValues)));
  click(kPrice, kLabels);
  EXPECT_EQ(screen.active(), Cell(kPrice, kValues));
  user->type(u"9");
  EXPECT_EQ(screen.text(kPrice), u"9");
}

TEST_F(Grid, CheckCellsToggleByClickAndSpaceButNotByTheirLabels) {
  click(kFirstCheck, kLabels);
  EXPECT_EQ(screen.active(), Cell(kFirstCheck, kValues));
  EXPECT_EQ(screen.text(kFirstCheck), u"0");
  click(kFirstCheck, kValues);
  EXPECT_EQ(screen.text(kFirstCheck), u"1");
  user->key(Qt::Key_Space);
  EXPECT_EQ(screen.text(kFirstCheck), u"0");
  user->type(u"7");
  EXPECT_EQ(screen.text(kFirstCheck), u"0");
  QTest::mouseDClick(user->window().windowHandle(), Qt::LeftButton, {}, middle(kLast, kValues));
  EXPECT_EQ(screen.text(kLast), u"0");

  // A press that is released elsewhere toggles neither cell.
  QTest::mousePress(user->window().windowHandle(), Qt::LeftButton, {},
                    middle(kFirstCheck, kValues));
  QTest::mouseRelease(user->window().windowHandle(), Qt::LeftButton, {}, middle(kLast, kValues));
  EXPECT_EQ(screen.text(kFirstCheck) + screen.text(kLast), u"00");

  screen.Grid1.Cell(kLast, kValues).Text(u"2");
  click(kLast, kValues);
  EXPECT_EQ(screen.text(kLast), u"1");
}

TEST_F(Grid, APickedEntryIsInTheCellBeforeItsEventIsRaised) {
  click(kDepartment, kValues);
  ASSERT_TRUE(listIsOpen());
  EXPECT_EQ(screen.text(kDepartment), u"");
  pick(1);
  EXPECT_FALSE(listIsOpen());
  for (const int entry : {1, 2, 3, 4, 5}) {
    click(kDepartment, kValues);
    pick(entry);
  }
  EXPECT_THAT(
      screen.picked,
      ElementsAre(u"Cakes, Pies, Pastries", u"Cakes, Pies, Pastries", u" Mind the gap  ,here",
                  u"Plain   , without a hidden part", std::u16string(60, u'x'), u""));
  EXPECT_EQ(screen.clicks.size(), 6U);

  click(kDepartment, kLabels);
  EXPECT_FALSE(listIsOpen());
}

TEST_F(Grid, TheListOpensByKeysAndOnlyAPickInItChangesTheCell) {
  screen.Grid1.Cell(kDepartment, kValues).SetFocus();
  const auto opensBy = [&](int key, Qt::KeyboardModifiers keys) {
    QTest::keyClick(user->window().windowHandle(), Qt::Key(key), keys);
    const bool open = listIsOpen();
    dropDown().hidePopup();
    return open;
  };
  EXPECT_TRUE(opensBy(Qt::Key_F4, Qt::NoModifier));
  EXPECT_TRUE(opensBy(Qt::Key_Down, Qt::AltModifier));
  EXPECT_TRUE(opensBy(Qt::Key_Space, Qt::NoModifier));

  user->type(u"c");
  ASSERT_TRUE(listIsOpen());
  QTest::keyClick(dropDown().view(), Qt::Key_Escape);
  EXPECT_FALSE(listIsOpen());
  QWheelEvent turn({20, 10}, dropDown().mapToGlobal(QPointF(20, 10)), {}, {0, 120}, Qt::NoButton,
                   Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&dropDown(), &turn);
  EXPECT_EQ(screen.text(kDepartment), u"");
  EXPECT_TRUE(screen.picked.empty());

  user->type(u"c");
  QTest::keyClick(dropDown().view(), Qt::Key_Return);
  EXPECT_EQ(screen.text(kDepartment), u"Cakes, Pies, Pastries");
  EXPECT_EQ(screen.picked.size(), 1U);
  EXPECT_EQ(screen.active(), Cell(kDepartment, kValues));
}

TEST_F(Grid, RowsAndColumnsOutOfRangeRaiseError9) {
  using support::errorNumberOf;
  FlexCell::Grid& grid = screen.Grid1;
  EXPECT_EQ(errorNumberOf([&] { grid.Cell(kLast + 1, kValues).Text(u""); }), 9);
  EXPECT_EQ(errorNumberOf([&] { grid.Cell(kName, 3).SetFocus(); }), 9);
  EXPECT_EQ(errorNumberOf([&] { grid.Cell(-1, 0).Text(); }), 9);
  EXPECT_EQ(errorNumberOf([&] { grid.Column(3).Width(9); }), 9);
  EXPECT_EQ(errorNumberOf([&] { grid.ComboBox(-1).AddItem(u""); }), 9);
  EXPECT_EQ(errorNumberOf([&] { grid.RowHeight(kLast + 1, 0); }), 9);
  EXPECT_EQ(errorNumberOf([&] { grid.Cell(kLast, kValues).Text(u""); }), 0);
}

TEST_F(Grid, FillsItsBoundsAndPaintsTheActiveCellAndTheBorder) {
  EXPECT_EQ(table().visualRect(table().model()->index(kName, kLabels)).top(), 0);
  EXPECT_EQ(table().rowHeight(kLast), 35);
  EXPECT_EQ(table().columnWidth(kLabels), 150);
  EXPECT_EQ(table().visualRect(table().model()->index(kLast, kValues)).right(),
            table().viewport()->width() - 1);

  const QPalette light = QApplication::palette();
  for (const QPalette& theme : {light, QPalette(QColor(0x30, 0x30, 0x34))}) {
    QApplication::setPalette(theme);
    screen.Grid1.Cell(kFirstCheck, kValues).SetFocus();
    support::settle();
    const QImage picture = table().grab().toImage();
    const auto pixel = [&](int row, int column) {
      const QPoint inWindow = middle(row, column);
      return picture.pixel(table().mapFrom(&user->window(), inWindow));
    };
    EXPECT_EQ(pixel(kFirstCheck, kValues), 0xFF80FFFF);
    EXPECT_EQ(pixel(kPrice, kValues), theme.color(QPalette::Base).rgb());
    EXPECT_EQ(pixel(kPrice, 0), theme.color(QPalette::Button).rgb());
    EXPECT_EQ(picture.pixel(0, 40), 0xFF808080);
    // The editor's text is dark on its light cell in both themes.
    screen.Grid1.Cell(kPrice, kValues).SetFocus();
    EXPECT_LT(QApplication::focusWidget()->palette().color(QPalette::Text).lightness(), 60);
  }
  QApplication::setPalette(light);
}

TEST_F(Grid, TheActiveCellShowsWhetherTheGridHasTheFocus) {
  for (const int row : {kName, kDepartment, kFirstCheck}) {
    const auto edge = [&] {
      support::settle();
      const QRect cell = table().visualRect(table().model()->index(row, kValues));
      return table().viewport()->grab().toImage().pixelColor(cell.left() + 1, cell.center().y());
    };
    screen.Grid1.Cell(row, kValues).SetFocus();
    user->focus("Grid1");
    EXPECT_EQ(edge(), QApplication::palette().color(QPalette::Highlight)) << row;
    user->focus("cmdSave");
    EXPECT_EQ(edge(), QColor(0x80, 0xFF, 0xFF)) << row;
  }
}

TEST_F(Grid, ScreenReadersGetLabelsValuesAndStates) {
  screen.Grid1.Cell(kName, kValues).Text(u"Tea");
  screen.Grid1.Cell(kDepartment, kValues).Text(u"Cakes, Pies, Pastries");
  screen.Grid1.Cell(kLast, kValues).Text(u"1");
  QAccessibleInterface* grid = QAccessible::queryAccessibleInterface(&table());
  EXPECT_EQ(grid->role(), QAccessible::Table);
  const auto cell = [&](int row, int column) {
    return grid->tableInterface()->cellAt(row, column);
  };
  EXPECT_EQ(cell(kName, kLabels)->text(QAccessible::Name), "Name");
  EXPECT_EQ(cell(kName, kValues)->text(QAccessible::Name), "Name: Tea");
  EXPECT_EQ(cell(kPrice, kValues)->text(QAccessible::Name), "Price");
  EXPECT_EQ(cell(kDepartment, kValues)->text(QAccessible::Name),
            "Department: Cakes, Pies, Pastries");
  EXPECT_EQ(cell(kLast, kValues)->text(QAccessible::Name), "Open price");
  EXPECT_TRUE(cell(kLast, kValues)->state().checked);
  EXPECT_FALSE(cell(kFirstCheck, kValues)->state().checked);

  const auto focused = [] {
    return QAccessible::queryAccessibleInterface(QApplication::focusWidget());
  };
  EXPECT_EQ(focused()->text(QAccessible::Name), "Name");
  EXPECT_EQ(focused()->text(QAccessible::Value), "Tea");
  user->key(Qt::Key_Down);
  user->key(Qt::Key_Down);
  EXPECT_EQ(focused()->role(), QAccessible::ComboBox);
  EXPECT_EQ(focused()->text(QAccessible::Name), "Department");
  EXPECT_EQ(focused()->text(QAccessible::Value), "Cakes, Pies, Pastries");
}

}  // namespace
