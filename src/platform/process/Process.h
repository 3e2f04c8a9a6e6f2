#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/process/Host.h"

namespace process {

/// Runs the handler of one control event or timer, or the start-up. A run-time error that it raises
/// is reported and ends the process with status 1; any other exception is turned into one first
/// (OutOfMemory or InternalError). Once the end has begun nothing is dispatched: neither while the
/// failure report shows, nor after an end that a test's host outlives.
void dispatch(const std::function<void()>& handler);

/// Ends the process with status 0. Never returns: under a test's host it unwinds to the
/// dispatcher.
[[noreturn]] void endProgram();

/// Unwinds to the dispatcher when the process has ended. To be called wherever a handler continues
/// after other events may have run, that is after each modal loop.
void unwindIfEnded();

/// True once the process has ended under a host that outlived it. Every modal loop returns then.
bool hasEnded();
/// Registers `exitLoop` to be called when the process ends under a host that outlives it, so that a
/// modal loop can return. Returns a function that removes the registration.
std::function<void()> onEnd(std::function<void()> exitLoop);

/// Shows a message box through the host; `style` is a sum of `MessageStyle`s, the default title the
/// program's. Unwinds to the dispatcher when the process has ended while the box was shown.
MessageAnswer MsgBox(const std::u16string& text, std::int32_t style = kOkOnly,
                     const std::u16string& title = std::u16string(kProgramTitle));
/// Starts the program at a path below the program folder, each name in any case. Raises what
/// `Host::startProgram` raises.
void Shell(std::u16string_view path, WindowStyle style);

}  // namespace process
