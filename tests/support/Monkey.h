#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "support/Shop.h"

class QWidget;

namespace support {

/// A user who acts at random at an editor; the same seed produces the same actions. The monkey
/// keeps a model of the expected keys, files and store, and compares it after each action. Where an
/// action ends the program, it starts the program again in the same shop.
class Monkey {
 public:
  Monkey(std::string screen, std::size_t keys);
  virtual ~Monkey() = default;
  Monkey(const Monkey&) = delete;
  Monkey& operator=(const Monkey&) = delete;

  /// Stops at the first difference, and reports the seed and the last actions.
  void play(unsigned seed, int actions);

 protected:
  struct Key {
    std::string id = {};
    std::u16string caption = {};
    std::int32_t back = kButtonFace;
    std::int32_t fore = kButtonText;
  };
  struct Action {
    int weight;
    const char* name;
    std::function<void()> act;
  };
  /// The parts of a list entry, or the error number where it can't be split.
  struct Item {
    int error = 0;
    std::u16string description = {};
    std::string id = {};
  };

  // Differences between the editors
  virtual Item split(const std::u16string& entry) const = 0;
  virtual std::u16string entryOf(std::u16string_view description, std::int64_t id) const = 0;
  virtual std::string layoutFile() const = 0;
  /// Sets the model to a fresh start. Returns the error number where the start must fail.
  virtual int resetModel() = 0;
  /// Runs `gesture`, which presses the control, and updates the model.
  virtual void press(const std::string& control, const std::function<void()>& gesture);
  virtual void doublePressKey(int index);
  virtual void saved() {}
  virtual void checkOwn() {}

  // Chance
  int below(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
  bool oneIn(int count) { return below(count) == 0; }
  template <class T>
  T oneOf(const std::vector<T>& choices) {
    return choices[static_cast<std::size_t>(below(static_cast<int>(choices.size())))];
  }
  std::string anyKey() { return key(below(static_cast<int>(keys_.size()))); }
  std::u16string anyName();
  void note(const std::string& detail) { history_.back() += " " + detail; }

  // The model
  void assign(int index, const Item& item);
  /// Applies the saved layout, if there is one, to the model. Returns the number of the error that
  /// a fault in it raises, 0 for none.
  int applyLayout(bool trimIds);
  void clear();
  void expectFailure(int number) { failure_ = number; }
  bool failed() const { return failure_ != 0; }
  std::u16string selectedEntry() const;

  Shop shop_;
  std::optional<WindowDriver> user_;
  std::vector<Key> keys_;
  std::vector<Action> actions_;
  int current_ = 0;
  bool copying_ = false;
  bool dropTargets_ = true;
  std::map<std::string, std::string> files_;  ///< of the folder Posdata
  std::string store_;

 private:
  void start();
  void step();
  void check();
  void checkFiles() const;
  void checkLooks();
  void drop();
  void doubleClickList();
  void pressFocused();
  void wander();
  std::string layoutBytes() const;

  const std::string screen_;
  std::mt19937 random_;
  std::deque<std::string> history_;
  std::vector<QWidget*> shown_;
  int failure_ = 0;
  bool left_ = false;     ///< the user has pressed Exit or closed the window
  bool byFrame_ = false;  ///< by the window's frame
  std::int32_t dialogColour_ = 0;
  std::int32_t copyBack_ = 0;
  std::int32_t copyFore_ = 0;
};

/// The text without the blanks around it.
std::u16string trimmed(std::u16string_view text);
/// A decimal number with blanks around it; absent for another text.
std::optional<std::int64_t> number(std::u16string_view text);
/// A text of Latin letters in the files' code page, and back.
std::string narrow(std::u16string_view text);
std::u16string wide(std::string_view bytes);

/// The seed of this run: 1, or the one that the test program was given, which goes up with each
/// repetition of a shuffled run.
unsigned monkeySeed();

}  // namespace support
