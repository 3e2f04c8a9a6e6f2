// A desktop of 1920 by 1080 device pixels at scale 2, which is 960 by 540 logical pixels. The tests
// of `SmallDesktop` run a second time at scale 2.8125; see CMakeLists.txt.

#include <gtest/gtest.h>

#include <QApplication>
#include <QScreen>
#include <QTableView>
#include <QWidget>

#include "platform/forms/DesktopHost.h"
#include "platform/forms/FlexCellGrid.h"
#include "platform/forms/Form.h"
#include "platform/forms/Label.h"
#include "platform/forms/MyCommandButton.h"
#include "support/Designs.h"
#include "support/TestHost.h"
#include "support/WindowDriver.h"

namespace {

/// A screen whose one visible label reaches to `right` and `bottom`.
class Wide : public forms::Form {
 public:
  Wide(int right, int bottom)
      : Form({.name = "Wide", .width = 3000, .height = 3000, .startMaximised = true}),
        corner(*this, design("corner", right - 1500, bottom - 300, true)),
        unseen(*this, design("unseen", 60000, 60000, false)) {}

  static forms::Design design(const char* name, int left, int top, bool visible) {
    auto design = support::designOf(name, left, top, 1500, 300);
    design.visible = visible;
    return design;
  }

  forms::Label corner;
  forms::Label unseen;
};

struct Laid {
  QRect corner;
  double points;
};

Laid laidOut(int right, int bottom) {
  support::TestHost host;
  Wide screen(right, bottom);
  screen.Show();
  const support::WindowDriver user("Wide");
  EXPECT_EQ(user.window().devicePixelRatioF(), 2);
  return {user.control("corner").geometry(), user.control("corner").font().pointSizeF()};
}

TEST(DenseDesktop, AScreenIsScaledDownOnlyAsFarAsNeeded) {
  const Laid fits = laidOut(14400, 7500);
  EXPECT_EQ(fits.corner, QRect(860, 480, 100, 20));
  EXPECT_EQ(fits.points, 9.75);

  // 1200 pixels on a screen of 960: four fifths, for positions and fonts alike.
  const Laid wide = laidOut(18000, 7500);
  EXPECT_EQ(wide.corner, QRect(880, 384, 80, 16));
  EXPECT_NEAR(wide.points, 7.8, 0.01);

  // Never under one device pixel for 15 twips.
  const Laid huge = laidOut(60000, 7500);
  EXPECT_EQ(huge.corner, QRect(1950, 240, 50, 10));
  EXPECT_NEAR(huge.points, 4.875, 0.01);
}

/// A grid as wide as its form, with as many rows of 35 pixels as fit into its height.
class WideGrid : public forms::Form {
 public:
  WideGrid() : Form({.name = "WideGrid", .width = 18000, .height = 4245}), Grid1(*this, design()) {}

  static FlexCell::GridDesign design() {
    FlexCell::GridDesign design;
    design.control = support::designOf("Grid1", 0, 0, 18000, 4245);
    design.rows = 8;
    design.cols = 3;
    design.defaultRowHeight = 35;
    design.extendLastCol = true;
    return design;
  }

  FlexCell::Grid Grid1;
};

TEST(DenseDesktop, AGridsRowsAndColumnsShrinkAndStillFit) {
  support::TestHost host;
  WideGrid screen;
  screen.Grid1.Column(1).Width(200);
  screen.Show();
  const support::WindowDriver user("WideGrid");
  const auto& grid = static_cast<QTableView&>(user.control("Grid1"));
  EXPECT_EQ(grid.width(), 960);
  EXPECT_EQ(grid.columnWidth(1), 160);
  EXPECT_EQ(grid.rowHeight(7), 28);
  const QRect last = grid.visualRect(grid.model()->index(7, 2));
  EXPECT_EQ(last.right(), grid.viewport()->width() - 1);
  EXPECT_LE(last.bottom(), grid.viewport()->height() - 1);
  // A column that is set later shrinks as well.
  screen.Grid1.Column(1).Width(100);
  EXPECT_EQ(grid.columnWidth(1), 80);
}

TEST(SmallDesktop, TheColourDialogFits) {
  const support::TestHost resetsProcess;
  const auto host = forms::makeHost();
  process::setHost(*host);
  QSize size;
  QSize room;
  support::soon([&] {
    QWidget* dialog = QApplication::activeModalWidget();
    size = dialog->size();
    room = dialog->screen()->availableSize();
    dialog->close();
  });
  host->showColourDialog();
  EXPECT_LE(size.width(), room.width());
  EXPECT_LE(size.height() + 24, room.height());
}

}  // namespace
