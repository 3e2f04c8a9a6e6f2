#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/process/Host.h"

namespace process {

/// Runs the handler of one control event or timer, or the start-up. A run-time error raised by it
/// is reported and ends the process with status 1; other exceptions become OutOfMemory or
/// InternalError first. Once the program's end has begun, calls do nothing: while the failure
/// report shows, and, in tests, after the end.
void dispatch(const std::function<void()>& handler);

/// Ends the process with status 0. Never returns: under a test's host it unwinds to the
/// dispatcher.
[[noreturn]] void endProgram();

/// Unwinds to the dispatcher if the program's end has begun. Must be called after each modal loop,
/// since other events may have ended the program in it.
void unwindIfEnding();

/// True once the host's `endProcess` has returned: a host may let the process live on, as that of
/// the tests does. Every modal loop returns then.
bool hasEnded();
/// Registers `exitLoop`, which makes a modal loop return, to be called after the host's
/// `endProcess` has returned. Returns a function that removes the registration.
std::function<void()> onEnd(std::function<void()> exitLoop);

/// Shows a message box through the host; `style` is a sum of `MessageStyle`s, the default title the
/// program's. Unwinds to the dispatcher when the process has ended while the box was shown.
MessageAnswer MsgBox(const std::u16string& text, std::int32_t style = kOkOnly,
                     const std::u16string& title = std::u16string(kProgramTitle));
/// Starts the program at a path below the program folder, each name in any case. Raises what
/// `Host::startProgram` raises.
void Shell(std::u16string_view path, WindowStyle style);

}  // namespace process
