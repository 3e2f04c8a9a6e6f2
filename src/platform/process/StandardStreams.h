#pragma once

#include <string_view>

namespace process {

/// Makes descriptors 0 to 2 safe to use. Opens the null device on those that are closed, so that no
/// other file or connection gets their number and the output meant for them; and makes a write to a
/// pipe without a reader, or beyond the process's file size limit, fail instead of ending the
/// process. To be called before any file is opened.
void prepareStandardStreams();

/// Restores the signal actions that this process has changed, for a program that it starts. Safe
/// between fork and exec.
void restoreInheritedSignals();

/// Writes as much of the text to standard error as is possible without waiting.
void writeToStandardError(std::string_view text) noexcept;

}  // namespace process
