#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "support/ProgramFolder.h"
#include "support/TestHost.h"
#include "support/WindowDriver.h"

namespace support {

/// One shop for one test: a program folder with a store, settings of its own, the recording host,
/// and the program's modules in their initial state. By default the store has slots 1 to 200, of
/// which 100, 130 and 195 are free and the others are called "Item 1" and so on; departments
/// "Drinks" (even ids) and "Food" (odd ids), "O'Brien's", "Empty hall" and one without a name; a
/// barcode for every third id.
class Shop {
 public:
  Shop();
  ~Shop();
  Shop(const Shop&) = delete;
  Shop& operator=(const Shop&) = delete;

  ProgramFolder folder;
  TestHost host;

  /// Names of products by slot; an absent name makes the slot free.
  std::map<std::int32_t, std::optional<std::u16string>> names;
  std::map<std::int32_t, std::optional<std::u16string>> barcodes;
  std::set<int> missingStock;  ///< ids without a row in `tblStock`
  std::set<int> missingPlu;    ///< ids without a row in `tblPlu`
  std::int32_t slotCount = 200;

  /// Writes the store file with the values of the members above; `start` does so if there is none
  /// yet.
  void writeStore();
  std::filesystem::path storeFile() const;
  /// Ends this run of the program, if it hasn't ended: the next start is like that of a new
  /// process.
  void newRun();
  /// Runs the start-up, as `main` does.
  void start();
  /// Runs the start-up and returns a driver for the editor that it opened.
  WindowDriver open(std::string_view screen = "frmMain");

  /// Writes `Posdata/FastTouchButtons.ini`, which the next start reads.
  void writeTouchButtons(std::string_view lines) const;
  /// The content of that file; empty where there is none.
  std::string touchFile() const;
  /// An entry of the settings store, as in the file; absent where there is none.
  std::optional<std::string> setting(std::string_view key) const;

  /// Presses Save, waits for the notice to close, and returns the lines of the layout file without
  /// their ends. Fails the test where a line doesn't end with CR LF.
  std::vector<std::string> save(WindowDriver& user, std::string_view file = "FastMovers1.txt");
  std::vector<std::string> layout(std::string_view file) const;

  /// Number of the failure that ended the program; 0 while it runs.
  std::int32_t failure() const;
};

/// Resets the program's modules to their state in a new process.
void resetModules();

/// A list entry of the levelled editor.
std::u16string entry(std::u16string_view description, std::int32_t id);
inline constexpr std::int32_t kButtonFace = -2147483633;  ///< back colour of a key as designed
inline constexpr std::int32_t kButtonText = -2147483630;  ///< text colour of a key as designed
inline constexpr std::int32_t kWhite = 16777215;          ///< back colour of a cleared key

/// One key of a layout file; by default a free key in the colours of the design.
struct LayoutLine {
  int key = 0;
  std::string product = {};
  std::string caption = {};
  std::int32_t back = kButtonFace;
  std::int32_t font = kButtonText;
};
/// The line of a key, without the line's end.
std::string lineOf(const LayoutLine& line);
/// A layout file of these lines.
std::string layoutOf(const std::vector<std::string>& lines);
/// The name of a control for a screen reader: its caption; "Key 7" for key 7 without a caption.
std::string caption(const WindowDriver& user, std::string_view control);
/// The colour that a control shows near its corner, as 0x00BBGGRR.
std::int32_t shownColour(const WindowDriver& user, std::string_view control);
/// "MyButton1(12)".
std::string key(int index);

}  // namespace support
