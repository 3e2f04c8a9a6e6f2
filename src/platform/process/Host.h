#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace runtime {
class RunTimeError;
}

namespace process {

/// Style flags of a message box, to be added: one for the buttons, one for the icon. The first
/// button is the default.
enum MessageStyle : std::int32_t {
  kOkOnly = 0,
  kYesNo = 4,
  kInformation = 64,
};

/// The result of a message box: the button that closed it.
enum MessageAnswer : std::int32_t {
  kOk = 1,
  kYes = 6,
  kNo = 7,
};

/// How a started program is to show its window. The product's host ignores it: on this system the
/// starter of a program can't control its windows.
enum class WindowStyle : std::int32_t { MinimizedFocus = 2 };

/// The program's interface to its user and to the process. The product's host shows real boxes and
/// ends the process; a test sets its own host, which records the calls and answers the boxes.
class Host {
 public:
  virtual ~Host() = default;

  /// Shows a modal message box and returns the answer. Only its buttons close a Yes/No box.
  virtual MessageAnswer showMessage(const std::u16string& text, std::int32_t style,
                                    const std::u16string& title) = 0;
  /// Shows the platform's colour dialog with no colour preselected. Returns the colour as
  /// 0x00BBGGRR, nullopt on Cancel.
  virtual std::optional<std::int32_t> showColourDialog() = 0;
  /// Writes the failure to standard error in one line ("Run-time error '13': Type mismatch") and
  /// shows it in a modal box.
  virtual void reportFailure(const runtime::RunTimeError& failure) = 0;
  /// Starts a program without waiting and without arguments. Raises FileNotFound when it is
  /// missing, InvalidProcedureCall or PermissionDenied when it can't be started.
  virtual void startProgram(const std::filesystem::path& program, WindowStyle style) = 0;
  /// Ends the process at once. The product's host doesn't return.
  virtual void endProcess(int status) = 0;
};

/// Sets the host that is used from now on; it must outlive its use.
void setHost(Host& host);
/// The host that was set. Raises InternalError where none was.
Host& host();

/// The program's title, for message boxes that have no title of their own.
inline constexpr std::u16string_view kProgramTitle = u"Keystrand";

}  // namespace process
