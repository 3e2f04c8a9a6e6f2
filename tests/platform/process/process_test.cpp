#include "platform/process/Process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <functional>
#include <new>
#include <stdexcept>
#include <string>

#include "platform/process/DetachedProgram.h"
#include "platform/process/StandardStreams.h"
#include "support/ProcessCopy.h"
#include "support/ProgramFolder.h"
#include "support/TestHost.h"

using runtime::ErrorNumber;
using runtime::RunTimeError;
using support::statusOfCopy;

TEST(StandardStreams, ClosedStreamsBecomeTheNullDevice) {
  EXPECT_EQ(statusOfCopy([] {
              for (const int descriptor : {0, 1, 2}) ::close(descriptor);
              process::prepareStandardStreams();
              process::writeToStandardError("lost");
              return ::open("/", O_RDONLY) > STDERR_FILENO ? 0 : 1;
            }),
            0);
}

// tests/e2e/test_endings.py tests a pipe whose reader is closed.
TEST(StandardStreams, APipeWithoutRoomBlocksNoWriter) {
  EXPECT_EQ(statusOfCopy([] {
              std::array<int, 2> ends{};
              if (::pipe(ends.data()) != 0) return 99;
              ::dup2(ends[1], STDERR_FILENO);
              process::prepareStandardStreams();
              process::writeToStandardError(std::string(200'000, 'x'));
              return 0;
            }),
            0);
}

TEST(StandardStreams, AWriteBeyondTheFileSizeLimitDoesNotEndTheProcess) {
  EXPECT_EQ(statusOfCopy([] {
              const rlimit none{0, RLIM_INFINITY};
              ::dup2(::fileno(std::tmpfile()), STDERR_FILENO);
              ::setrlimit(RLIMIT_FSIZE, &none);
              process::prepareStandardStreams();
              process::writeToStandardError("lost");
              return 0;
            }),
            0);
}

TEST(StandardStreams, AStartedProgramInheritsNoChangedSignal) {
  const support::ProgramFolder folder;
  folder.write(
      "program",
      "#!/bin/sh\ngrep -E 'Sig(Blk|Ign)' /proc/self/status >said.part\nmv said.part said\n");
  const auto program = folder.path() / "program";
  std::filesystem::permissions(program, std::filesystem::perms::all);
  const auto said = [&] {
    std::filesystem::remove(folder.path() / "said");
    process::startDetached(program);
    for (int i = 0; i < 2000 && !folder.read("said"); ++i) ::usleep(10'000);
    return folder.read("said").value_or("nothing");
  };
  const std::string before = said();
  process::prepareStandardStreams();
  EXPECT_EQ(said(), before);
  EXPECT_NE(before, "nothing");
  process::restoreInheritedSignals();
}

TEST(Dispatch, ReportsAFailureOnceAndEndsWithStatusOne) {
  support::TestHost host;
  bool ranDuringTheReport = false;
  host.whileReportIsUp = [&] { process::dispatch([&] { ranDuringTheReport = true; }); };
  process::dispatch([] { throw RunTimeError(ErrorNumber::TypeMismatch); });

  ASSERT_EQ(host.failures.size(), 1U);
  EXPECT_STREQ(host.failures[0].what(), "13: Type mismatch");
  EXPECT_EQ(host.endStatus, 1);
  EXPECT_TRUE(process::hasEnded());
  EXPECT_FALSE(ranDuringTheReport);
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

TEST(Dispatch, AnEndInsideANestedEventStopsTheOuterHandlerWhenItsMessageBoxReturns) {
  support::TestHost host;
  bool loopExited = false;
  bool wentOn = false;
  const auto unregister = process::onEnd([&] { loopExited = true; });
  const auto never = process::onEnd([] { FAIL() << "called after it was unregistered"; });
  never();
  host.whileMessageIsUp = [](const auto&) { process::dispatch([] { process::endProgram(); }); };
  process::dispatch([&] {
    process::MsgBox(u"Reset this level?", process::kYesNo, u"Reset");
    wentOn = true;
  });
  EXPECT_TRUE(loopExited);
  EXPECT_FALSE(wentOn);
  EXPECT_EQ(host.ends, 1);
  EXPECT_EQ(host.endStatus, 0);
  EXPECT_TRUE(host.failures.empty());
}

TEST(Dispatch, AFailureInANestedEventIsReportedOnlyOnce) {
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
