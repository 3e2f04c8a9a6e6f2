#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/runtime/RunTimeError.h"

namespace process {

/// Style flags of a message box, added up: buttons, icon. The first button is the default.
enum MessageStyle : std::int32_t {
  kOkOnly = 0,
  kYesNo = 4,
  kInformation = 64,
};

/// What a message box gives back: the button that closed it.
enum MessageAnswer : std::int32_t {
  kOk = 1,
  kYes = 6,
  kNo = 7,
};

/// How a started program's window is to come up. Kept as a value: the host system starts a program
/// without a say in its windows.
enum class WindowStyle : std::int32_t { MinimizedFocus = 2 };

/// All that leaves the program passes through here. The product's host shows real boxes and ends
/// the process; a test sets its own and can watch and answer.
class Host {
 public:
  virtual ~Host() = default;

  /// Shows a modal message box and gives the answer. Nothing but its buttons closes a Yes/No box.
  virtual MessageAnswer showMessage(const std::u16string& text, std::int32_t style,
                                    const std::u16string& title) = 0;
  /// Shows the platform's colour dialog with no colour preselected. Gives the colour as 0x00BBGGRR,
  /// nothing on Cancel.
  virtual std::optional<std::int32_t> showColourDialog() = 0;
  /// Shows the modal failure report ("Run-time error '13':" and the text) and writes the same line
  /// to standard error.
  virtual void reportFailure(const runtime::RunTimeError& failure) = 0;
  /// Starts a program without waiting and without arguments. Raises FileNotFound when it is
  /// missing, InvalidProcedureCall or PermissionDenied when it can't be started.
  virtual void startProgram(const std::filesystem::path& program, WindowStyle style) = 0;
  /// Ends the process at once. The product's host doesn't return.
  virtual void endProcess(int status) = 0;
};

/// Makes `host` the one that is asked from now on; it must outlive its use.
void setHost(Host& host);
/// The one that was set. Raises InternalError before any was.
Host& host();

/// The program's title, for message boxes that have no title of their own.
inline constexpr std::u16string_view kProgramTitle = u"Keystrand";

}  // namespace process
