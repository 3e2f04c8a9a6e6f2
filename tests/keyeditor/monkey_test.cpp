// Users who act at random: whatever they do, the program shows its screen or ends with an error of
// its contract, the files hold what the keys show, and other files and the store stay as they are.

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QMimeData>
#include <QTest>
#include <QWidget>
#include <algorithm>
#include <deque>
#include <map>
#include <random>
#include <set>
#include <system_error>

#include "support/Shop.h"

using support::key;
using support::readFile;
using support::WindowDriver;

namespace {

namespace fs = std::filesystem;

/// True while this program has the file open.
bool isOpen(const fs::path& file) {
  return std::ranges::any_of(fs::directory_iterator("/proc/self/fd"), [&](const auto& descriptor) {
    std::error_code gone;  // the descriptor of this directory walk
    return fs::equivalent(descriptor.path(), file, gone);
  });
}

/// The seed of this run: 1, or the one that the test program was given, which goes up with each
/// repetition of a shuffled run.
unsigned seedOfRun() {
  if (GTEST_FLAG_GET(random_seed) == 0) return 1;
  return static_cast<unsigned>(testing::UnitTest::GetInstance()->random_seed());
}

struct Editor {
  const char* screen;
  const char* setting;
  int keys;
  std::vector<std::string> controls;  ///< besides the keys
};

class Monkey : public testing::TestWithParam<Editor> {
 protected:
  Monkey() {
    shop_.names[40000] = u"Zebra";  // an id beyond 16 bits, which can't be assigned to a key
    shop_.folder.write("Posdata/Posconfig.ini",
                       std::string("[GENERAL]\r\nLOAD_FASTMOVERS_LARGE=") + editor_.setting);
  }

  /// Starts the program again in the same shop.
  void start() {
    user_.reset();
    shop_.newRun();
    shop_.start();
    ASSERT_EQ(shop_.failure(), 0);
    user_.emplace(editor_.screen);
    store_ = readFile(shop_.storeFile()).value();
    files_ = files();
    if (files_.contains(layoutFile())) expectShown();
  }

  void act() {
    shop_.host.answers = {oneIn(2) ? process::kYes : process::kNo};
    shop_.host.colours = {oneIn(4) ? std::nullopt : std::optional(below(support::kWhite + 1))};
    const std::string name = oneIn(4) ? oneOf(editor_.controls) : key(below(editor_.keys));
    if (!user_->isVisible(name)) return;
    history_.push_back(name);
    if (history_.size() > 25) history_.pop_front();
    if (oneIn(4))
      pressKeys(name);
    else if (oneIn(8))
      QTest::mouseClick(&user_->control(name), oneIn(2) ? Qt::RightButton : Qt::MiddleButton);
    else if (name == "List1")
      useList();
    else if (name.starts_with("cb"))
      user_->pick(name, below(static_cast<int>(user_->entries(name).size())));
    else if (name.starts_with("MyButton1") && oneIn(2))
      drop(name);
    else if (name.starts_with("MyButton1") && oneIn(2))
      doubleClick(name);
    else
      user_->click(name);
    support::settle();
  }

  /// The program's state after each action.
  void check() {
    const std::int32_t failure = shop_.failure();
    EXPECT_TRUE(std::set({0, 5, 6, 13, -2147217900}).contains(failure)) << failure;
    EXPECT_EQ(shop_.host.failures.size(), failure != 0 ? 1U : 0U);
    EXPECT_EQ(shop_.host.endStatus.value_or(0), failure != 0 ? 1 : 0);
    EXPECT_TRUE(WindowDriver::isShown(editor_.screen));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_TRUE(failure != 0 || !isOpen(shop_.storeFile()));
    EXPECT_TRUE(readFile(shop_.storeFile()) == store_) << "the store has changed";
    auto before = std::exchange(files_, files());
    auto now = files_;
    const std::string layout = layoutFile();
    if (now[layout] != before[layout]) expectShown();
    for (const std::string& own : {layout, std::string("FastTouchButtons.ini")})
      before[own] = now[own];
    EXPECT_TRUE(now == before) << "another file has changed";
  }

  bool hasEnded() const { return shop_.host.endStatus.has_value(); }
  std::string history() const {
    std::string all = "seed " + std::to_string(seedOfRun()) + ", the last actions at:";
    for (const std::string& name : history_) all += " " + name;
    return all;
  }

 private:
  int below(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
  bool oneIn(int count) { return below(count) == 0; }
  template <class T>
  T oneOf(const std::vector<T>& choices) {
    return choices[static_cast<std::size_t>(below(static_cast<int>(choices.size())))];
  }

  void pressKeys(const std::string& name) {
    user_->focus(name);
    user_->type(oneOf<std::u16string>({u"", u"Lunch", u"  Bar ", u"Sunday breakfast, late"}));
    user_->key(oneOf<int>({Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Backtab,
                           Qt::Key_Right, Qt::Key_Down, Qt::Key_End, Qt::Key_Escape, Qt::Key_F1}));
    if (QWidget* popup = QApplication::activePopupWidget()) popup->close();
  }

  void useList() {
    const int row = below(static_cast<int>(user_->entries("List1").size()) + 1);
    if (oneIn(4)) return user_->clickRow("List1", row, oneIn(2));
    user_->doubleClickRow("List1", row);
  }

  void drop(const std::string& name) {
    QMimeData data;
    const std::u16string id = oneOf<std::u16string>({u"77", u"  1042 ", u"32767"});
    const std::u16string text = oneOf<std::u16string>(
        {u"Tea", u"", u"  padded  ", u"Caf\u00e9 cr\u00e8me", u"Fish & Chips", u"<b>Bun</b>",
         u"A name of more than forty-five characters in all and more"});
    if (editor_.keys == 108)
      data.setText(QString::fromStdU16String(id).leftJustified(10) +
                   QString::fromStdU16String(text));
    else
      data.setText(QString::fromStdU16String(text).leftJustified(130, ' ', true) +
                   QString::fromStdU16String(id));
    if (oneIn(60)) data.setText("no entry");
    if (oneIn(10)) data.setData("image/png", "no text");
    user_->drop(name, data, 3);
  }

  // The sheet for a new product opens in the levelled editor, and closes with nothing added.
  void doubleClick(const std::string& name) {
    support::soon([] {
      if (WindowDriver::isShown("frmAddPlu")) WindowDriver("frmAddPlu").click("cmdClose");
    });
    user_->doubleClick(name);
  }

  std::string layoutFile() const {
    if (editor_.keys == 108) return "FastMovers.txt";
    const auto& level = static_cast<QComboBox&>(user_->control("cbLevel"));
    return "FastMovers" + level.currentText().toStdString() + ".txt";
  }
  /// The files in Posdata by name.
  std::map<std::string, std::string> files() const {
    std::map<std::string, std::string> found;
    for (const auto& file : fs::directory_iterator(shop_.folder.posdata()))
      found[file.path().filename()] = readFile(file.path()).value();
    return found;
  }

  /// Checks that the keys show what the layout file has, or nothing where it was deleted.
  void expectShown() {
    const auto lines = shop_.layout(layoutFile());
    const int rest = below(editor_.keys);
    for (int i = 0; i < editor_.keys; ++i) {
      const QWidget& widget = user_->control(key(i));
      const QByteArray shown = widget.accessibleName().toLatin1();
      const QByteArray line =
          lines.empty() ? ",,,-1," : lines.at(static_cast<std::size_t>(i)).data();
      const auto fields = line.split(',');
      ASSERT_EQ(fields.size(), 5);
      EXPECT_EQ(shown, fields[2].isEmpty() ? "Key " + QByteArray::number(i) : fields[2]);
      const int back = fields[3].toInt();
      if (i == rest && back >= 0 && !widget.hasFocus() && !widget.underMouse()) {
        EXPECT_EQ(support::shownColour(*user_, key(i)), back);
      }
    }
  }

  const Editor editor_ = GetParam();
  support::Shop shop_;
  std::optional<WindowDriver> user_;
  std::mt19937 random_{seedOfRun()};
  std::deque<std::string> history_;
  std::map<std::string, std::string> files_;  ///< before the next action
  std::string store_;
};

TEST_P(Monkey, AThousandRandomActionsLeaveFilesThatHoldWhatTheKeysShow) {
  start();
  for (int i = 0; i < 1000 && !HasFailure(); ++i) {
    act();
    check();
    if (hasEnded() && !HasFailure()) start();
  }
  EXPECT_FALSE(HasFailure()) << history();
}

INSTANTIATE_TEST_SUITE_P(
    Editors, Monkey,
    testing::Values(Editor{"frmMain",
                           "0",
                           63,
                           {"List1", "cmdSelCol", "cmdFontColour", "cmdResetColor", "cmdCopy",
                            "cmdSave", "cmdClose", "cmdResetAll", "cmdUpdate", "Check1",
                            "chkBarcode", "cbLevel", "cbDept", "txtName"}},
                    Editor{"frmMainBig",
                           "1",
                           108,
                           {"List1", "cmdSelCol", "cmdFontColour", "cmdResetColor", "cmdCopy",
                            "cmdSave", "cmdClose"}}),
    [](const auto& editor) { return std::string(editor.param.screen); });

}  // namespace
