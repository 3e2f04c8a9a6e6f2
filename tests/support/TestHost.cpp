#include "support/TestHost.h"

#include "platform/process/seam/ProcessEnd.h"

namespace support {
namespace {

template <class T>
T takeFront(std::deque<T>& queue, T otherwise) {
  if (queue.empty()) return otherwise;
  T front = queue.front();
  queue.pop_front();
  return front;
}

}  // namespace

TestHost::TestHost() {
  process::resetEnded();
  process::setHost(*this);
}

process::MessageAnswer TestHost::showMessage(const std::u16string& text, std::int32_t style,
                                             const std::u16string& title) {
  messages.push_back({text, style, title});
  if (whileMessageIsUp) whileMessageIsUp(messages.back());
  const bool isQuestion = (style & process::kYesNo) != 0;
  return isQuestion ? takeFront(answers, process::kNo) : process::kOk;
}

std::optional<std::int32_t> TestHost::showColourDialog() {
  ++colourDialogs;
  return takeFront(colours, {});
}

void TestHost::reportFailure(const runtime::RunTimeError& failure) {
  failures.push_back(failure);
  if (whileReportIsUp) whileReportIsUp();
}

void TestHost::startProgram(const std::filesystem::path& program, process::WindowStyle style) {
  if (startFailure) throw runtime::RunTimeError(*startFailure);
  started.push_back({program, style});
}

void TestHost::endProcess(int status) {
  endStatus = status;
  ++ends;
}

}  // namespace support
