// The product's host: its message boxes and dialogs, and the programs that it starts.

#include <gmock/gmock.h>

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QWindow>

#include "platform/forms/DesktopHost.h"
#include "platform/process/Process.h"
#include "support/FileFaults.h"
#include "support/ProgramFolder.h"
#include "support/TestHost.h"
#include "support/WindowDriver.h"

namespace {

using support::errorNumberOf;
using support::soon;

QMessageBox& box() {
  return *qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
}

class RealHost : public testing::Test {
 protected:
  RealHost() : host(forms::makeHost()) { process::setHost(*host); }

  support::TestHost resetsProcess;  // clears the process's state
  std::unique_ptr<process::Host> host;
};

TEST_F(RealHost, OnlyItsButtonsCloseAQuestion) {
  bool wasUp = false;
  soon([&] {
    EXPECT_EQ(box().windowTitle(), "Reset");
    EXPECT_EQ(box().text(), "All <b>buttons</b> & more?");
    EXPECT_EQ(box().textFormat(), Qt::PlainText);
    EXPECT_EQ(box().icon(), QMessageBox::Information);
    EXPECT_EQ(box().standardButton(box().defaultButton()), QMessageBox::Yes);
    QTest::keyClick(&box(), Qt::Key_Escape);
    box().windowHandle()->close();
    support::settle();
    wasUp = box().isVisible();
    box().button(QMessageBox::No)->click();
  });
  EXPECT_EQ(process::MsgBox(u"All <b>buttons</b> & more?", 68, u"Reset"), process::kNo);
  EXPECT_TRUE(wasUp);
  soon([] { QTest::keyClick(&box(), Qt::Key_Return); });
  EXPECT_EQ(process::MsgBox(u"Sure?", process::kYesNo), process::kYes);
}

TEST_F(RealHost, APlainMessageHasOneButtonTheProgramsTitleAndNoIcon) {
  soon([] {
    EXPECT_EQ(box().windowTitle(), "Keystrand");
    EXPECT_EQ(box().icon(), QMessageBox::NoIcon);
    EXPECT_EQ(box().buttons().size(), 1);
    QTest::keyClick(&box(), Qt::Key_Escape);
  });
  EXPECT_EQ(process::MsgBox(u"Close the app and restart it."), process::kOk);
}

TEST_F(RealHost, AFailureIsShownAndWrittenInOneLine) {
  soon([] {
    EXPECT_EQ(box().windowTitle(), "Keystrand");
    EXPECT_EQ(box().text(), "Run-time error '13':\n\nType mismatch");
    EXPECT_TRUE(box().textInteractionFlags().testFlags(Qt::TextSelectableByMouse |
                                                       Qt::TextSelectableByKeyboard));
    box().button(QMessageBox::Ok)->click();
  });
  testing::internal::CaptureStderr();
  host->reportFailure(runtime::RunTimeError(runtime::ErrorNumber::TypeMismatch));
  EXPECT_THAT(testing::internal::GetCapturedStderr(),
              testing::StartsWith("Run-time error '13': Type mismatch\n"));
}

TEST_F(RealHost, StartsAProgramInItsFolderWithoutArguments) {
  const support::ProgramFolder folder;
  // A folder's name need not be valid UTF-8.
  const auto odd = folder.path() / "caf\xE9";
  folder.write(odd / "comms.exe", "#!/bin/sh\necho \"$# $PWD\" > told.part\nmv told.part told\n");
  const auto program = odd / "comms.exe";
  const auto start = [&] { host->startProgram(program, process::WindowStyle::MinimizedFocus); };
  EXPECT_EQ(errorNumberOf(start), 70);
  std::filesystem::permissions(program, std::filesystem::perms::owner_all);
  start();
  EXPECT_TRUE(support::waitUntil([&] { return folder.read(odd / "told").has_value(); }));
  EXPECT_EQ(folder.read(odd / "told"), "0 " + odd.string() + "\n");

  folder.write("broken.exe", "\x7f not a program");
  const auto broken = folder.path() / "broken.exe";
  std::filesystem::permissions(broken, std::filesystem::perms::owner_all);
  EXPECT_EQ(
      errorNumberOf([&] { host->startProgram(broken, process::WindowStyle::MinimizedFocus); }), 5);
  EXPECT_EQ(errorNumberOf([&] {
              host->startProgram(folder.path() / "none.exe", process::WindowStyle::MinimizedFocus);
            }),
            53);
}

}  // namespace
