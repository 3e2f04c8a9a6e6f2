#pragma once

#include <string_view>

namespace process {

/// Makes descriptors 0 to 2 safe to have: the null device is opened on those that are closed, so
/// that no file or connection gets their number and what is written to it; and a write to a pipe
/// that nobody reads, or past the size that a file may have, fails instead of ending the process.
/// To be called before anything is opened.
void prepareStandardStreams();

/// Puts back what a program that this one starts must not inherit. Safe between fork and exec.
void restoreInheritedSignals();

/// Writes to standard error as much of the text as it takes at once, and never waits for it.
void writeToStandardError(std::string_view text) noexcept;

}  // namespace process
