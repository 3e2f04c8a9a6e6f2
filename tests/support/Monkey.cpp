#include "support/Monkey.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QListView>
#include <QMimeData>
#include <QTest>
#include <QWidget>
#include <algorithm>
#include <filesystem>
#include <system_error>

namespace support {
namespace {

constexpr std::size_t kRemembered = 25;
constexpr std::size_t kIdField = 1;
constexpr std::size_t kCaptionField = 2;
constexpr std::size_t kBackField = 3;

/// True while this program has the file open.
bool isOpen(const std::filesystem::path& file) {
  return std::ranges::any_of(std::filesystem::directory_iterator("/proc/self/fd"),
                             [&](const auto& descriptor) {
                               std::error_code gone;  // the descriptor of this directory walk
                               return std::filesystem::equivalent(descriptor.path(), file, gone);
                             });
}

std::vector<std::string> fieldsOf(const std::string& line) {
  std::vector<std::string> fields(1);
  for (const char c : line) {
    if (c == ',')
      fields.emplace_back();
    else
      fields.back() += c;
  }
  return fields;
}

}  // namespace

Monkey::Monkey(std::string screen, std::size_t keys) : keys_(keys), screen_(std::move(screen)) {
  actions_ = {
      {12, "clicks a key",
       [this] {
         const std::string name = anyKey();
         note(name);
         press(name, [&] { user_->click(name); });
       }},
      {6, "double-clicks a key", [this] { doublePressKey(below(static_cast<int>(keys_.size()))); }},
      {14, "drops a text", [this] { drop(); }},
      {10, "double-clicks the list", [this] { doubleClickList(); }},
      {6, "presses a command",
       [this] {
         // cmdSelCol is listed twice, to be chosen twice as often.
         const auto name = oneOf<std::string>(
             {"cmdSelCol", "cmdFontColour", "cmdResetColor", "cmdCopy", "cmdSelCol"});
         note(name);
         press(name, [&] { user_->click(name); });
       }},
      {8, "presses what has the focus", [this] { pressFocused(); }},
      {10, "does what has no effect", [this] { wander(); }},
      {2, "saves", [this] { press("cmdSave", [&] { user_->click("cmdSave"); }); }},
      {1, "exits", [this] { press("cmdClose", [&] { user_->click("cmdClose"); }); }},
      {1, "closes the frame",
       [this] {
         user_->close();
         left_ = byFrame_ = true;
       }},
  };
}

std::u16string Monkey::anyName() {
  return oneOf<std::u16string>({u"Tea", u"Tea, green", u"Bun, 2", u"", u"  padded  ",
                                u"Caf\u00e9 cr\u00e8me", u"Fish & Chips", u"<b>Bun</b>",
                                u"Exactly thirty characters long",
                                u"A name of more than forty-five characters in all, and more"});
}

void Monkey::play(unsigned seed, int actions) {
  random_.seed(seed);
  start();
  for (int i = 0; i < actions && !testing::Test::HasFailure(); ++i) step();
  if (!testing::Test::HasFailure()) return;
  std::string lastActions;
  for (const std::string& action : history_) lastActions += "\n  " + action;
  ADD_FAILURE() << "The monkey with seed " << seed
                << " found this. Its last actions:" << lastActions;
}

void Monkey::start() {
  user_.reset();
  for (;;) {
    shop_.newRun();
    shop_.start();
    current_ = 0;
    copying_ = left_ = byFrame_ = false;
    failure_ = 0;
    dialogColour_ = 0;
    keys_.assign(keys_.size(), {});
    store_ = readFile(shop_.storeFile()).value();
    const int expected = resetModel();
    ASSERT_EQ(shop_.failure(), expected) << "at the start";
    EXPECT_EQ(WindowDriver::isShown(screen_), expected == 0);
    if (expected == 0) break;
    // The shop deletes the layout that the program refuses.
    files_.erase(layoutFile());
    std::filesystem::remove(shop_.folder.posdata() / layoutFile());
  }
  user_.emplace(screen_);
  shown_.clear();
  for (std::size_t i = 0; i < keys_.size(); ++i)
    shown_.push_back(&user_->control(key(static_cast<int>(i))));
}

void Monkey::step() {
  int all = 0;
  for (const Action& action : actions_) all += action.weight;
  int drawn = below(all);
  auto action = actions_.begin();
  while (drawn >= action->weight) drawn -= (action++)->weight;
  history_.emplace_back(action->name);
  if (history_.size() > kRemembered) history_.pop_front();
  action->act();
  settle();
  check();
  if (!testing::Test::HasFailure() && (left_ || failed())) start();
}

void Monkey::check() {
  ASSERT_EQ(shop_.failure(), failure_);
  EXPECT_EQ(shop_.host.failures.size(), failed() ? 1U : 0U);
  checkFiles();
  if (failed() || left_) {
    EXPECT_EQ(shop_.host.endStatus, byFrame_ ? std::nullopt : std::optional(failed() ? 1 : 0));
    EXPECT_NE(WindowDriver::isShown(screen_), byFrame_);
    return;
  }
  EXPECT_FALSE(shop_.host.endStatus);
  EXPECT_TRUE(user_->window().isVisible());
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  EXPECT_FALSE(isOpen(shop_.storeFile()));
  checkLooks();
  checkOwn();
}

void Monkey::checkFiles() const {
  std::map<std::string, std::string> found;
  for (const auto& file : std::filesystem::directory_iterator(shop_.folder.posdata()))
    found[file.path().filename().string()] = readFile(file.path()).value();
  for (const auto& [name, bytes] : files_) EXPECT_EQ(found[name], bytes) << name;
  EXPECT_EQ(found.size(), files_.size());
  EXPECT_EQ(readFile(shop_.storeFile()) == store_, true) << "the store has changed";
}

void Monkey::checkLooks() {
  for (std::size_t i = 0; i < keys_.size(); ++i) {
    const std::u16string& caption = keys_[i].caption;
    EXPECT_EQ(shown_[i]->accessibleName().toStdU16String(),
              caption.empty() ? u"Key " + wide(std::to_string(i)) : caption)
        << i;
  }
  const auto atRest = [](const QWidget& widget) {
    return !widget.hasFocus() && !widget.underMouse();
  };
  const int any = below(static_cast<int>(keys_.size()));
  const Key& expected = keys_[static_cast<std::size_t>(any)];
  if (expected.back >= 0 && atRest(user_->control(key(any)))) {
    EXPECT_EQ(shownColour(*user_, key(any)), expected.back) << any;
  }
  EXPECT_EQ(caption(*user_, "cmdCopy"), copying_ ? "STOP COPY" : "Copy Button Settings");
  if (copying_ && atRest(user_->control("cmdCopy"))) {
    EXPECT_EQ(shownColour(*user_, "cmdCopy"), 255);
  }
}

// The model

void Monkey::assign(int index, const Item& item) {
  Key& target = keys_[static_cast<std::size_t>(index)];
  target.caption = item.description;
  target.id = item.id;
}

void Monkey::clear() {
  for (Key& each : keys_) {
    each.caption.clear();
    each.back = kWhite;
  }
}

std::string Monkey::layoutBytes() const {
  std::vector<std::string> texts;
  for (std::size_t i = 0; i < keys_.size(); ++i)
    texts.push_back(std::to_string(i) + "," + keys_[i].id + "," + narrow(keys_[i].caption) + "," +
                    std::to_string(keys_[i].back) + "," + std::to_string(keys_[i].fore));
  return lines(texts);
}

int Monkey::applyLayout(bool trimIds) {
  const auto file = files_.find(layoutFile());
  if (file == files_.end()) return 0;
  std::size_t at = 0;
  for (Key& each : keys_) {
    const std::size_t end = file->second.find("\r\n", at);
    const auto fields = fieldsOf(file->second.substr(at, end - at));
    at = end + 2;
    each.caption = wide(fields[kCaptionField]);
    const auto colour = number(wide(fields[kBackField]));
    if (!colour) return 13;
    each.back = static_cast<std::int32_t>(*colour);
    each.id = trimIds ? narrow(trimmed(wide(fields[kIdField]))) : fields[kIdField];
  }
  return 0;
}

// The actions

void Monkey::press(const std::string& control, const std::function<void()>& gesture) {
  Key& target = keys_[static_cast<std::size_t>(current_)];
  if (control == "cmdSave") {
    gesture();
    files_[layoutFile()] = layoutBytes();
    saved();
    return;
  }
  if (control == "cmdSelCol" || control == "cmdFontColour") {
    const std::optional<std::int32_t> choice =
        oneIn(4) ? std::nullopt : std::optional(below(kWhite + 1));
    shop_.host.colours = {choice};
    gesture();
    EXPECT_TRUE(shop_.host.colours.empty()) << "the dialog was not shown";
    dialogColour_ = choice.value_or(dialogColour_);
    (control == "cmdSelCol" ? target.back : target.fore) = dialogColour_;
    return;
  }
  gesture();
  if (control == "cmdResetColor") target = {.back = kWhite};
  if (control == "cmdClose") left_ = true;
  if (control == "cmdCopy") {
    copying_ = !copying_;
    copyBack_ = target.back;
    copyFore_ = target.fore;
  }
  for (std::size_t i = 0; i < keys_.size(); ++i) {
    if (control != key(static_cast<int>(i))) continue;
    if (copying_) {
      keys_[i].back = copyBack_;
      keys_[i].fore = copyFore_;
    } else {
      current_ = static_cast<int>(i);
    }
  }
}

void Monkey::doublePressKey(int index) {
  note(key(index));
  press(key(index), [&] { user_->doubleClick(key(index)); });
}

void Monkey::drop() {
  const int index = below(static_cast<int>(keys_.size()));
  note(key(index));
  if (oneIn(10)) {
    QMimeData picture;
    picture.setData("image/png", "no text");
    user_->drop(key(index), picture, 3);
    return;
  }
  std::u16string text = entryOf(anyName(), below(32768));
  if (oneIn(60))
    text = oneOf<std::u16string>(
        {u"", u"12345", u"no number at all", entryOf(u"Tea", 32768), std::u16string(140, u'x')});
  note(narrow(text));
  EXPECT_EQ(user_->drop(key(index), text), dropTargets_);
  if (!dropTargets_) return;
  const Item item = split(text);
  expectFailure(item.error);
  if (!failed()) assign(index, item);
}

std::u16string Monkey::selectedEntry() const {
  const auto& list = static_cast<QListView&>(user_->control("List1"));
  const auto rows = list.selectionModel()->selectedRows();
  return rows.isEmpty() ? std::u16string() : rows.first().data().toString().toStdU16String();
}

void Monkey::doubleClickList() {
  if (!user_->isVisible("List1")) return;
  const int count = static_cast<int>(user_->entries("List1").size());
  const int row = count == 0 || (count < 10 && oneIn(4)) ? count : below(count);
  user_->doubleClickRow("List1", row);
  const std::u16string text = selectedEntry();
  note("row " + std::to_string(row) + " " + narrow(text));
  const Item item = text.empty() ? Item{.error = 5} : split(text);
  expectFailure(item.error);
  if (!failed()) assign(current_, item);
}

void Monkey::pressFocused() {
  for (int tabs = below(4); tabs > 0; --tabs) user_->tab();
  const QWidget* focused = user_->window().focusWidget();
  if (focused == nullptr) return;
  EXPECT_TRUE(focused->isVisible());
  const std::string name = focused->objectName().toStdString();
  const bool isButton = name.starts_with("MyButton1") || name.starts_with("cmd");
  note(name);
  if (isButton || name.starts_with("ch") || name == "Check1")
    press(name, [&] {
      user_->key(isButton ? oneOf<Qt::Key>({Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter})
                          : Qt::Key_Space);
    });
}

void Monkey::wander() {
  const std::string name = anyKey();
  switch (below(5)) {
    case 0:
      user_->moveTo(name);
      break;
    case 1:
      QTest::mouseClick(&user_->control(name), oneIn(2) ? Qt::RightButton : Qt::MiddleButton);
      break;
    case 2:
      user_->focus(name);
      user_->key(oneOf<Qt::Key>({Qt::Key_Right, Qt::Key_Escape, Qt::Key_F1, Qt::Key_X}));
      break;
    case 3:
      user_->key(Qt::Key_Backtab);
      break;
    default:
      if (!user_->isVisible("List1")) break;
      user_->clickRow("List1", below(20), oneIn(2));
      user_->key(oneOf<Qt::Key>({Qt::Key_Down, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_Return}));
  }
}

std::u16string trimmed(std::u16string_view text) {
  const std::size_t first = text.find_first_not_of(u' ');
  if (first == std::u16string_view::npos) return {};
  return std::u16string(text.substr(first, text.find_last_not_of(u' ') - first + 1));
}

std::optional<std::int64_t> number(std::u16string_view text) {
  const std::string digits = narrow(trimmed(text));
  const bool isNumber = !digits.empty() && digits.find_first_not_of("-0123456789") == digits.npos;
  return isNumber ? std::optional(std::stoll(digits)) : std::nullopt;
}

std::string narrow(std::u16string_view text) {
  return std::string(text.begin(), text.end());
}

std::u16string wide(std::string_view bytes) {
  std::u16string text;
  for (const char c : bytes) text += static_cast<unsigned char>(c);
  return text;
}

unsigned monkeySeed() {
  if (GTEST_FLAG_GET(random_seed) == 0) return 1;
  return static_cast<unsigned>(testing::UnitTest::GetInstance()->random_seed());
}

}  // namespace support
