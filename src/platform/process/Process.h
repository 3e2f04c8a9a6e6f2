#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/process/Host.h"

namespace process {

/// Runs one control event, timer or the start-up. A run-time error that comes out of it is reported
/// and ends the process with status 1; any other exception is turned into one first (OutOfMemory
/// or InternalError). Nothing is dispatched from the moment on when the end begins: not behind the
/// failure report either, and not after an end that a test's host outlives.
void dispatch(const std::function<void()>& handler);

/// Ends the process on purpose, with status 0. Never returns: under a test's host it unwinds to the
/// dispatcher.
[[noreturn]] void endProgram();

/// Unwinds to the dispatcher when the process has been ended. To be called wherever a handler goes
/// on after other events may have run, that is behind each modal loop.
void unwindIfEnded();

/// True once the process was ended under a host that outlived it. Every modal loop leaves then.
bool hasEnded();
/// Calls `leave` when the process is ended under a host that outlives it, so that a modal loop can
/// return. Gives back a function that takes the call off again.
std::function<void()> onEnd(std::function<void()> leave);

/// Shows a message box through the host; `style` is a sum of `MessageStyle`s. Without a title it
/// bears the program's. Does not return when the process was ended while it was up.
MessageAnswer MsgBox(const std::u16string& text, std::int32_t style = kOkOnly,
                     const std::u16string& title = std::u16string(kProgramTitle));
/// Starts the program at a path below the program folder, each name in any case. Raises what
/// `Host::startProgram` raises.
void Shell(std::u16string_view path, WindowStyle style);

}  // namespace process
