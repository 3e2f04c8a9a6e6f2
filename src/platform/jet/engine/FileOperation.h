#pragma once

#include <string_view>
#include <utility>

namespace jet {

/// What the engine was doing when the operating system refused a file operation.
enum class FileOperation { Opening, Reading, Updating };

/// Within a handler: raises the provider's error, with the engine's text, for a refusal of the
/// operating system; any other exception passes.
[[noreturn]] void rethrowAsEngineError(FileOperation operation, std::u16string_view shownPath);

/// Runs `work` and turns a refusal of the operating system into the provider's error.
template <class Work>
auto withEngineErrors(FileOperation operation, std::u16string_view shownPath, Work&& work) {
  try {
    return std::forward<Work>(work)();
  } catch (...) {
    rethrowAsEngineError(operation, shownPath);
  }
}

}  // namespace jet
