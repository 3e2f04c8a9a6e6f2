#include "platform/process/Process.h"

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

void end(int status) {
  host().endProcess(status);
  processEnd().ended = true;
  // A copy, since a loop that returns removes its own call from the list.
  const auto loopExits = processEnd().loopExits;
  for (const auto& [number, exitLoop] : loopExits) exitLoop();
}

void fail(const RunTimeError& failure) {
  // Failures after the process has ended are ignored.
  if (processEnd().ending) return;
  // Set before the modal report, so that no timer is dispatched while it shows.
  processEnd().ending = true;
  try {
    host().reportFailure(failure);
  } catch (const std::exception&) {
    // The process ends even where the report fails.
  }
  end(kFailureStatus);
}

}  // namespace

void dispatch(const std::function<void()>& handler) {
  if (processEnd().ending) return;
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
  if (!processEnd().ending) {
    processEnd().ending = true;
    end(0);
  }
  throw Ended{};
}

void unwindIfEnding() {
  if (processEnd().ending) throw Ended{};
}

bool hasEnded() {
  return processEnd().ended;
}

std::function<void()> onEnd(std::function<void()> exitLoop) {
  const int number = processEnd().nextLoopExit++;
  processEnd().loopExits.emplace(number, std::move(exitLoop));
  return [number] { processEnd().loopExits.erase(number); };
}

MessageAnswer MsgBox(const std::u16string& text, std::int32_t style, const std::u16string& title) {
  const MessageAnswer answer = host().showMessage(text, style, title);
  unwindIfEnding();
  return answer;
}

void Shell(std::u16string_view path, WindowStyle style) {
  host().startProgram(files::resolve(path), style);
}

}  // namespace process
