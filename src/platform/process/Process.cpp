#include "platform/process/Process.h"

#include <map>
#include <new>
#include <utility>

#include "platform/files/ProgramFolder.h"
#include "platform/process/seam/ProcessEnd.h"

namespace process {
namespace {

using runtime::ErrorNumber;
using runtime::RunTimeError;

/// Unwinds to the dispatcher after the end. No std::exception, so that nothing on the way takes it
/// for a failure.
struct Ended {};

constexpr int kFailureStatus = 1;

struct Life {
  bool stopped = false;  ///< the end has begun: nothing is dispatched any more
  bool ended = false;    ///< and the host has outlived it
  std::map<int, std::function<void()>> leavers;
  int nextLeaver = 0;
};

Life& life() {
  static Life theLife;
  return theLife;
}

void end(int status) {
  host().endProcess(status);
  life().ended = true;
  // A loop that leaves takes its own call off the list.
  const auto leavers = life().leavers;
  for (const auto& [number, leave] : leavers) leave();
}

void fail(const RunTimeError& failure) {
  // A failure on the way out of a process that has been ended is nobody's any more.
  if (life().stopped) return;
  // The report is modal, and no timer runs behind it.
  life().stopped = true;
  try {
    host().reportFailure(failure);
  } catch (const std::exception&) {
    // Where even the report fails, the end is all that is left.
  }
  end(kFailureStatus);
}

}  // namespace

void dispatch(const std::function<void()>& handler) {
  if (life().stopped) return;
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
  if (!life().stopped) {
    life().stopped = true;
    end(0);
  }
  throw Ended{};
}

void unwindIfEnded() {
  if (life().stopped) throw Ended{};
}

bool hasEnded() {
  return life().ended;
}

std::function<void()> onEnd(std::function<void()> leave) {
  const int number = life().nextLeaver++;
  life().leavers.emplace(number, std::move(leave));
  return [number] { life().leavers.erase(number); };
}

void resetEnded() {
  life().stopped = false;
  life().ended = false;
  life().leavers.clear();
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
