#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/process/Host.h"
#include "platform/runtime/RunTimeError.h"

namespace support {

/// A host that records the program's requests and answers from queues. Its constructor clears the
/// process's state; it has to outlive all windows and handlers of the test.
class TestHost final : public process::Host {
 public:
  struct Message {
    std::u16string text;
    std::int32_t style;
    std::u16string title;
  };
  struct Started {
    std::filesystem::path program;
    process::WindowStyle style;
  };

  TestHost();

  /// Answers to the next questions; an unexpected one is answered with No, a box without a question
  /// with OK.
  std::deque<process::MessageAnswer> answers;
  /// Answers of the next colour dialogs; Cancel when there is none left.
  std::deque<std::optional<std::int32_t>> colours;
  /// Called while a message box is up, before it is answered.
  std::function<void(const Message&)> whileMessageIsUp;
  /// Called while the failure report is up.
  std::function<void()> whileReportIsUp;
  /// Raised by each start of a program while it is set.
  std::optional<runtime::RunTimeError> startFailure;

  std::vector<Message> messages;
  std::vector<runtime::RunTimeError> failures;
  std::vector<Started> started;
  int colourDialogs = 0;
  std::optional<int> endStatus;
  int ends = 0;

  process::MessageAnswer showMessage(const std::u16string& text, std::int32_t style,
                                     const std::u16string& title) override;
  std::optional<std::int32_t> showColourDialog() override;
  void reportFailure(const runtime::RunTimeError& failure) override;
  void startProgram(const std::filesystem::path& program, process::WindowStyle style) override;
  void endProcess(int status) override;
};

}  // namespace support
