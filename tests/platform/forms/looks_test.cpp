// Appearance of lists, text boxes, drop-downs and check boxes in a light and a dark theme: aligned
// texts, visible focus, clear edges.

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QImage>
#include <cstdlib>

#include "platform/forms/CheckBox.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/Form.h"
#include "platform/forms/ListBox.h"
#include "platform/forms/TextBox.h"
#include "support/Designs.h"
#include "support/TestHost.h"
#include "support/WindowDriver.h"

namespace {

forms::Design row(const char* name, int line, std::u16string_view caption = {}, int height = 360) {
  auto design = support::designOf(name, 150, 150 + 450 * line, 3000, height, line);
  design.caption = caption;
  design.backColour = forms::kWhite;
  return design;
}

/// Boxes and a list that all show the same text.
class LooksScreen : public forms::Form {
 public:
  LooksScreen()
      : Form({.name = "LooksScreen", .width = 6000, .height = 6000}),
        tick(*this, row("tick", 0, u"Half price")),
        box(*this, row("box", 1)),
        text(*this, row("text", 2, u"Hot Drinks")),
        list(*this, row("list", 3, {}, 1500)) {
    for (const auto* entry : {u"Hot Drinks", u"Bakery"}) {
      box.AddItem(entry);
      list.AddItem(entry);
    }
    box.ListIndex(0);
  }

  forms::CheckBox tick;
  forms::ComboBox box;
  forms::TextBox text;
  forms::ListBox list;
};

class Looks : public testing::TestWithParam<bool> {
 protected:
  Looks() {
    if (GetParam()) QApplication::setPalette(QPalette(QColor(0x20, 0x20, 0x24)));
    screen.Show();
    user.emplace("LooksScreen");
  }
  ~Looks() override { QApplication::setPalette(usual); }

  QImage picture(const char* name) { return user->control(name).grab().toImage(); }

  static int contrast(const QImage& picture, int x, int y, const QColor& background) {
    return std::abs(picture.pixelColor(x, y).lightness() - background.lightness());
  }

  /// The x position at which the text begins in a picture of a box, right of its frame.
  static int textStart(const QImage& picture, const QColor& background) {
    for (int x = 3; x < picture.width(); ++x)
      for (int y = 4; y < 19; ++y)
        if (contrast(picture, x, y, background) > 120) return x;
    return -1;
  }

  QPalette usual = QApplication::palette();
  support::TestHost host;
  LooksScreen screen;
  std::optional<support::WindowDriver> user;
};

TEST_P(Looks, TextsOfBoxesAndListsAreAligned) {
  user->focus("tick");
  const QColor background = QApplication::palette().color(QPalette::Base);
  const int start = textStart(picture("list"), background);
  EXPECT_GT(start, 4);
  EXPECT_EQ(textStart(picture("box"), background), start);
  EXPECT_EQ(textStart(picture("text"), background), start);
}

TEST_P(Looks, EachKindOfTabStopShowsTheFocus) {
  for (const auto* name : {"tick", "box", "text", "list"}) {
    user->focus(std::string_view(name) == "tick" ? "box" : "tick");
    const QImage without = picture(name);
    user->focus(name);
    const QImage with = picture(name);
    int changed = 0;
    for (int y = 0; y < with.height(); ++y)
      for (int x = 0; x < with.width(); ++x)
        changed += contrast(with, x, y, without.pixelColor(x, y)) > 40 ? 1 : 0;
    EXPECT_GT(changed, 250) << name;
  }
}

TEST_P(Looks, ACheckBoxHasAClearEdgeAndMarkOnItsOwnColour) {
  user->focus("box");
  const auto ink = [&] {
    const QImage mark = picture("tick").copy(0, 0, 17, 24);
    int dark = 0;
    for (int y = 0; y < mark.height(); ++y)
      for (int x = 0; x < mark.width(); ++x) dark += contrast(mark, x, y, Qt::white) > 90 ? 1 : 0;
    return dark;
  };
  const int empty = ink();
  EXPECT_GT(empty, 50);
  screen.tick.Value(1);
  EXPECT_GT(ink(), empty + 12);
}

TEST_P(Looks, AnOpenListHasAClearEdgeAndMarksTheEntryThatEnterPicks) {
  auto& box = static_cast<QComboBox&>(user->control("box"));
  screen.box.ListIndex(-1);
  user->click("box");
  const QPalette colours = QApplication::palette();
  const QColor background = colours.color(QPalette::Base);
  const QImage list = box.view()->window()->grab().toImage();
  for (const int x : {0, list.width() - 1})
    EXPECT_GT(contrast(list, x, list.height() / 2, background), 60);
  EXPECT_GT(contrast(list, list.width() / 2, list.height() - 1, background), 60);
  EXPECT_EQ(list.pixelColor(list.width() - 4, 5), colours.color(QPalette::Highlight));
  user->key(Qt::Key_Return);
  EXPECT_EQ(screen.box.ListIndex(), 0);
}

INSTANTIATE_TEST_SUITE_P(InBothThemes, Looks, testing::Bool(),
                         [](const auto& theme) { return theme.param ? "Dark" : "Light"; });

}  // namespace
