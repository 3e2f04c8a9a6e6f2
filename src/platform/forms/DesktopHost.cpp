#include "platform/forms/DesktopHost.h"

#include <QApplication>
#include <cstdio>
#include <cstdlib>

#include "platform/forms/qt/ColourDialog.h"
#include "platform/forms/qt/Colours.h"
#include "platform/forms/qt/MessageBox.h"
#include "platform/forms/qt/Raise.h"
#include "platform/process/DetachedProgram.h"
#include "platform/process/Host.h"
#include "platform/process/StandardStreams.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/RunTimeError.h"

namespace forms {
namespace {

using runtime::RunTimeError;

constexpr std::int32_t kButtonsMask = 0xF;
constexpr std::int32_t kIconMask = 0xF0;

class DesktopHost : public process::Host {
 public:
  process::MessageAnswer showMessage(const std::u16string& text, std::int32_t style,
                                     const std::u16string& title) override {
    const bool asks = (style & kButtonsMask) == process::kYesNo;
    qt::MessageBox box(text, title, asks ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok);
    if ((style & kIconMask) == process::kInformation) box.setIcon(QMessageBox::Information);
    const int answer = box.ask();
    if (!asks) return process::kOk;
    return answer == QMessageBox::Yes ? process::kYes : process::kNo;
  }

  std::optional<std::int32_t> showColourDialog() override {
    qt::ColourDialog dialog(QApplication::activeWindow());
    const qt::EndRegistration registration([&dialog] { dialog.reject(); });
    if (process::hasEnded() || dialog.exec() != QDialog::Accepted) return std::nullopt;
    return qt::storedColour(dialog.selectedColor());
  }

  void reportFailure(const RunTimeError& failure) override {
    const std::string heading = "Run-time error '" + std::to_string(failure.number()) + "':";
    process::writeToStandardError(heading + " " + runtime::toUtf8(failure.text()) + "\n");
    qt::MessageBox box(runtime::fromUtf8(heading) + u"\n\n" + failure.text(),
                       std::u16string(process::kProgramTitle), QMessageBox::Ok);
    box.setIcon(QMessageBox::Critical);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box.ask();
  }

  void startProgram(const std::filesystem::path& program, process::WindowStyle) override {
    process::startDetached(program);
  }

  void endProcess(int status) override {
    std::fflush(nullptr);
    std::_Exit(status);
  }
};

}  // namespace

std::unique_ptr<process::Host> makeHost() {
  return std::make_unique<DesktopHost>();
}

}  // namespace forms
