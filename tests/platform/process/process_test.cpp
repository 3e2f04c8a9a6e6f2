#include "platform/process/Process.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "support/ProgramFolder.h"
#include "support/TestHost.h"

using runtime::ErrorNumber;
using runtime::RunTimeError;

TEST(Dispatch, ReportsAFailureOnceAndEndsWithStatusOne) {
  support::TestHost host;
  bool ranBehindTheReport = false;
  host.whileReportIsUp = [&] { process::dispatch([&] { ranBehindTheReport = true; }); };
  process::dispatch([] { throw RunTimeError(ErrorNumber::TypeMismatch); });

  ASSERT_EQ(host.failures.size(), 1U);
  EXPECT_STREQ(host.failures[0].what(), "13: Type mismatch");
  EXPECT_EQ(host.endStatus, 1);
  EXPECT_TRUE(process::hasEnded());
  EXPECT_FALSE(ranBehindTheReport);
  process::dispatch([] { FAIL() << "dispatched after the end"; });
}

TEST(Dispatch, TurnsOtherExceptionsIntoFailures) {
  const auto numberFor = [](const std::function<void()>& handler) {
    support::TestHost host;
    process::dispatch(handler);
    EXPECT_EQ(host.failures.size(), 1U);
    return host.failures.at(0).number();
  };
  EXPECT_EQ(numberFor([] { throw std::bad_alloc(); }), 7);
  EXPECT_EQ(numberFor([] { throw std::out_of_range("at"); }), 51);
  EXPECT_EQ(numberFor([] { throw RunTimeError(-2147467259, u"Not a valid password."); }),
            -2147467259);
}

TEST(Dispatch, AnEndInsideANestedEventStopsTheOuterHandlerBehindItsBox) {
  support::TestHost host;
  bool left = false;
  bool wentOn = false;
  const auto takeOff = process::onEnd([&] { left = true; });
  const auto never = process::onEnd([] { FAIL() << "called though it was taken off"; });
  never();
  host.whileMessageIsUp = [](const auto&) { process::dispatch([] { process::endProgram(); }); };
  process::dispatch([&] {
    process::MsgBox(u"Reset this level?", process::kYesNo, u"Reset");
    wentOn = true;
  });
  EXPECT_TRUE(left);
  EXPECT_FALSE(wentOn);
  EXPECT_EQ(host.ends, 1);
  EXPECT_EQ(host.endStatus, 0);
  EXPECT_TRUE(host.failures.empty());
}

TEST(Dispatch, AFailureInANestedEventIsReportedOnceForAll) {
  support::TestHost host;
  host.whileMessageIsUp = [](const auto&) {
    process::dispatch([] { throw RunTimeError(ErrorNumber::Overflow); });
  };
  process::dispatch([] {
    try {
      process::MsgBox(u"Saved");
    } catch (const std::exception&) {
      FAIL() << "the end looked like a failure";
    }
  });
  EXPECT_EQ(host.failures.size(), 1U);
  EXPECT_EQ(host.ends, 1);
  EXPECT_EQ(host.endStatus, 1);
}

TEST(MsgBox, BearsTheProgramsTitleAndGivesTheAnswer) {
  support::TestHost host;
  host.answers = {process::kYes};
  EXPECT_EQ(process::MsgBox(u"There are no records", process::kOkOnly), process::kOk);
  EXPECT_EQ(process::MsgBox(u"Sure?", process::kYesNo, u"Reset all"), process::kYes);
  EXPECT_EQ(host.messages.at(0).title, u"Keystrand");
  EXPECT_EQ(host.messages.at(1).title, u"Reset all");
}

TEST(Shell, FindsTheProgramInAnyCaseAndLetsItsFailureOut) {
  support::TestHost host;
  const support::ProgramFolder folder;
  folder.write("Tavenor_Comms.EXE", "");
  const std::u16string path = u"\\tavenor_comms.exe";
  const auto start = [&] {
    process::Shell(std::u16string(folder.path().u16string()) + path,
                   process::WindowStyle::MinimizedFocus);
  };
  start();
  ASSERT_EQ(host.started.size(), 1U);
  EXPECT_EQ(host.started[0].program, folder.path() / "Tavenor_Comms.EXE");
  host.startFailure = RunTimeError(ErrorNumber::FileNotFound);
  EXPECT_THROW(start(), RunTimeError);
}
