#include "platform/process/Process.h"

#include <map>
#include <new>
#include <utility>

#include "platform/files/ProgramFolder.h"
#include "platform/process/seam/ProcessEnd.h"
#include "platform/runtime/RunTimeError.h"

namespace process {
namespace {

using runtime::ErrorNumber;
using runtime::RunTimeError;

/// Thrown to unwind to the dispatcher once the program's end has begun. Not derived from
/// std::exception, so that code that catches failures doesn't catch it.
struct Ended {};

constexpr int kFailureStatus = 1;

struct State {
  bool stopped = false;  ///< the end has begun: nothing is dispatched any more
  bool ended = false;    ///< `Host::endProcess` has returned, which it does only in tests
  std::map<int, std::function<void()>> loopExits;  ///< by registration: exits from modal loops
  int nextLoopExit = 0;
};

State& state() {
  static State instance;
  return instance;
}

void end(int status) {
  host().endProcess(status);
  state().ended = true;
  // A copy, since a loop that returns removes its own call from the list.
  const auto loopExits = state().loopExits;
  for (const auto& [number, exitLoop] : loopExits) exitLoop();
}

void fail(const RunTimeError& failure) {
  // Failures after the process has ended are ignored.
  if (state().stopped) return;
  // Set before the modal report, so that no timer is dispatched while it shows.
  state().stopped = true;
  try {
    host().reportFailure(failure);
  } catch (const std::exception&) {
    // The process ends even where the report fails.
  }
  end(kFailureStatus);
}

}  // namespace

void dispatch(const std::function<void()>& handler) {
  if (state().stopped) return;
  try {
    handler();
  } catch (const Ended&) {
    return;
  } catch (const RunTimeError& failure) {
    fail(failure);
  } catch (const std::bad_alloc&) {
    fail(RunTimeError(ErrorNumber::OutOfMemory));
  } catch (const std::exception&) {
    fail(RunTimeError(ErrorNumber::InternalError));
  }
}

void endProgram() {
  if (!state().stopped) {
    state().stopped = true;
    end(0);
  }
  throw Ended{};
}

void unwindIfEnded() {
  if (state().stopped) throw Ended{};
}

bool hasEnded() {
  return state().ended;
}

std::function<void()> onEnd(std::function<void()> exitLoop) {
  const int number = state().nextLoopExit++;
  state().loopExits.emplace(number, std::move(exitLoop));
  return [number] { state().loopExits.erase(number); };
}

void resetEnded() {
  state().stopped = false;
  state().ended = false;
  state().loopExits.clear();
}

MessageAnswer MsgBox(const std::u16string& text, std::int32_t style, const std::u16string& title) {
  const MessageAnswer answer = host().showMessage(text, style, title);
  unwindIfEnded();
  return answer;
}

void Shell(std::u16string_view path, WindowStyle style) {
  host().startProgram(files::resolve(path), style);
}

}  // namespace process
