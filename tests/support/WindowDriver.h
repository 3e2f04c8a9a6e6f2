#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

class QMimeData;
class QPoint;
class QWidget;

namespace support {

/// Simulates the user of one screen. Finds controls by their own names ("cmdSave",
/// "MyButton1(12)"), and acts through the window as pointer and keyboard do, so that a blocked
/// screen ignores the actions. After every action all due events have been handled. A missing
/// control aborts the test program, with a message that names the control.
class WindowDriver {
 public:
  /// Drives the screen of that name, which must be shown.
  explicit WindowDriver(std::string_view screen);
  static bool isShown(std::string_view screen);

  QWidget& window() const { return *window_; }
  QWidget& control(std::string_view name) const;
  bool isVisible(std::string_view name) const;
  bool hasFocus(std::string_view name) const;

  void click(std::string_view name);
  /// Two clicks, quick enough to count as one double click.
  void doubleClick(std::string_view name);
  /// A click right after the one before, so that both count as a double click where the control
  /// supports one.
  void clickAgain(std::string_view name);
  void press(std::string_view name);
  void release(std::string_view name);
  void moveTo(std::string_view name);
  /// Moves the focus to a control as the tab key does.
  void focus(std::string_view name);
  void type(std::u16string_view text);
  void key(int key);
  void tab();
  /// Closes the window by its frame.
  void close();

  /// Opens a drop-down list and picks an entry in it.
  void pick(std::string_view comboBox, int entry);
  std::vector<std::u16string> entries(std::string_view listOrComboBox) const;
  /// For a row after the last one, clicks below the last row.
  void clickRow(std::string_view list, int row, bool rightButton = false);
  void doubleClickRow(std::string_view list, int row);

  /// Drags a text over a control and drops it there; the source offers a move. Returns true if the
  /// control accepted the drop. The second form drops any data and offers these Qt::DropActions.
  bool drop(std::string_view name, std::u16string_view text);
  bool drop(std::string_view name, const QMimeData& data, int offeredActions);

 private:
  QPoint centre(std::string_view name) const;
  QPoint rowPoint(std::string_view list, int row) const;

  QWidget* window_;
};

/// Handles all events that are due.
void settle();
/// Runs the event loop until the condition is true; false when it isn't in time.
bool waitUntil(const std::function<bool()>& condition, int milliseconds = 5000);
/// Runs `act` from the event loop: for user actions while a modal box is up.
void soon(std::function<void()> act, int milliseconds = 0);

}  // namespace support
