#include "platform/process/Process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <functional>
#include <new>
#include <stdexcept>
#include <string>

#include "platform/process/DetachedProgram.h"
#include "platform/process/StandardStreams.h"
#include "support/ProgramFolder.h"
#include "support/TestHost.h"

using runtime::ErrorNumber;
using runtime::RunTimeError;

namespace {

/// The exit status of a copy of this process that runs `act`; negative where a signal ended it.
int statusOfCopy(const std::function<int()>& act) {
  const pid_t copy = ::fork();
  if (copy == 0) {
    ::alarm(20);  // a copy that hangs is ended
    ::_exit(act());
  }
  int status = 0;
  if (::waitpid(copy, &status, 0) != copy || !WIFEXITED(status)) return -1;
  return WEXITSTATUS(status);
}

std::array<int, 2> pipeOnStandardError() {
  std::array<int, 2> ends{};
  if (::pipe(ends.data()) != 0) ::_exit(99);
  ::dup2(ends[1], STDERR_FILENO);
  ::close(ends[1]);
  return ends;
}

}  // namespace

TEST(StandardStreams, ClosedStreamsBecomeTheNullDevice) {
  EXPECT_EQ(statusOfCopy([] {
              for (const int descriptor : {0, 1, 2}) ::close(descriptor);
              process::prepareStandardStreams();
              process::writeToStandardError("lost");
              return ::open("/", O_RDONLY) > STDERR_FILENO ? 0 : 1;
            }),
            0);
}

TEST(StandardStreams, APipeWithoutAReaderOrRoomBlocksNoWriter) {
  EXPECT_EQ(statusOfCopy([] {
              ::close(pipeOnStandardError()[0]);
              process::prepareStandardStreams();
              process::writeToStandardError("lost");
              return 0;
            }),
            0);
  EXPECT_EQ(statusOfCopy([] {
              pipeOnStandardError();
              process::prepareStandardStreams();
              process::writeToStandardError(std::string(200'000, 'x'));
              return 0;
            }),
            0);
}

TEST(StandardStreams, AFileAtItsLargestSizeStopsNobody) {
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

TEST(Dispatch, AnEndInsideANestedEventStopsTheOuterHandlerAfterItsBox) {
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

TEST(MsgBox, ShowsTheProgramsTitleAndReturnsTheAnswer) {
  support::TestHost host;
  host.answers = {process::kYes};
  EXPECT_EQ(process::MsgBox(u"There are no records", process::kOkOnly), process::kOk);
  EXPECT_EQ(process::MsgBox(u"Sure?", process::kYesNo, u"Reset all"), process::kYes);
  EXPECT_EQ(host.messages.at(0).title, u"Keystrand");
  EXPECT_EQ(host.messages.at(1).title, u"Reset all");
}

TEST(Shell, FindsTheProgramInAnyCaseAndRaisesAFailedStart) {
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
