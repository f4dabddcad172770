// tests/platform/windows/ComCacheUtilityTest.cpp: the utility's process and all that ends it.
#include "platform/windows/com/ComCacheUtility.h"

#include "tests/platform/windows/FakeUtility.h"
#include "tests/platform/windows/HeldHandles.h"
#include "tests/platform/windows/UtilityCase.h"
#include "tests/support/ErrorOf.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;

/// A process to watch that never ends by itself.
class SleepingProcess {
 public:
  SleepingProcess() : process_(StartProgram("refresh_tests.exe", "--sleep")) {}
  ~SleepingProcess() { Kill(); }
  SleepingProcess(const SleepingProcess&) = delete;
  SleepingProcess& operator=(const SleepingProcess&) = delete;
  std::int32_t Id() const { return static_cast<std::int32_t>(::GetProcessId(process_.get())); }
  void Kill() {
    ::TerminateProcess(process_.get(), 9);
    ::WaitForSingleObject(process_.get(), 5000);
  }

 private:
  KernelHandle process_;
};

/// A utility of its own making instead of the registered one.
class FakeCacheUtilityTest : public UtilityCase {
 protected:
  FakeCacheUtilityTest() : UtilityCase(false) {
    fake_.object->Has("InterfaceVersion", 1);
    fake_.object->Has("ProcessId", process_.Id());
    Create();
  }
  ~FakeCacheUtilityTest() override {
    fake_.onCall = [](const std::string&) {};
    utility_.reset();
  }
  SleepingProcess process_;
  FakeUtility fake_;
};

TEST_F(FakeCacheUtilityTest, TheInputsAreHandedOverInTheirOrderBeforeTheStart) {
  inputs_ = {2026, 7, "C:\\é.tmp", "C:\\~é.tmp", "id", "store"};
  utility_->Start(inputs_);
  EXPECT_THAT(fake_.log,
              ElementsAre("ClientProcess=" + std::to_string(::GetCurrentProcessId()),
                          "ViewYear=2026", "FirstMonth=7", "CacheFile=C:\\é.tmp",
                          "WorkFile=C:\\~é.tmp", "FolderID=id", "StoreID=store", "Start"));
  EXPECT_THROW(utility_->Start(inputs_), Error) << "one at a time";
  fake_.Complete(1, 0);
  EXPECT_THAT(AwaitCompletion(), Pair(1, 0));
}

TEST_F(FakeCacheUtilityTest, ACompletionArrivesOnceAndOutsideOfTheCallsThatBroughtIt) {
  fake_.onCall = [&](const std::string& call) {
    if (call != "Start") return;
    fake_.Complete(42, -5);
    fake_.Complete(1, 0);
    PumpFor(20);
  };
  EXPECT_THAT(Refresh(), Pair(42, -5));
  fake_.onCall = [&](const std::string& call) {
    if (call != "Stop") return;
    fake_.Complete(6, 0);
    PumpFor(20);
    EXPECT_EQ(completions_.size(), 1U) << "from within Stop";
  };
  utility_->Start(inputs_);
  utility_->Stop();
  EXPECT_THAT(AwaitCompletion(), Pair(6, 0));
  // One that nobody waits for.
  fake_.Complete(1, 0);
  PumpFor(50);
  EXPECT_EQ(completions_.size(), 2U);
}

TEST_F(FakeCacheUtilityTest, AProcessThatEndsCompletesTheRefresh) {
  utility_->Start(inputs_);
  process_.Kill();
  EXPECT_THAT(AwaitCompletion(), Pair(7, 0));
  SleepingProcess second;
  fake_.object->Has("ProcessId", second.Id());
  utility_->Start(inputs_);
  utility_->Stop();
  second.Kill();
  EXPECT_THAT(AwaitCompletion(), Pair(6, 0)) << "it was to stop";
}

TEST_F(FakeCacheUtilityTest, AnotherVersionIsRefusedInWords) {
  const std::vector<std::string> before = fake_.log;
  const auto refusal = [&] { return ErrorOf([&] { Create(); }).Description(); };
  fake_.object->Has("InterfaceVersion", 2);
  EXPECT_THAT(refusal(), HasSubstr("of another version (interface 2, not 1)"));
  fake_.object->members.erase("InterfaceVersion");
  EXPECT_THAT(refusal(), HasSubstr("of another version"));
  EXPECT_EQ(fake_.log, before);
}

TEST_F(FakeCacheUtilityTest, TheUtilityMayBeDestroyedByItsCompletionAndInTheMiddleOfItsStart) {
  for (const auto& [moment, starts] : {std::pair{"Start", true}, {"ViewYear=2026", false}}) {
    fake_.onCall = [&, at = std::string(moment), early = !starts](const std::string& call) {
      if (call != at) return;
      if (early) utility_.reset();
      fake_.Complete(1, 0);
    };
    int completed = 0;
    ComCacheUtilities utilities(owner_, {});
    utility_ = utilities.Create([&](short, long) {
      utility_.reset();
      ++completed;
      throw Error(5, "nobody listens");
    });
    utility_->Start(inputs_);
    PumpFor(100);
    EXPECT_EQ(completed, starts ? 1 : 0) << moment;
    EXPECT_EQ(utility_, nullptr);
  }
}

class ComCacheUtilityTest : public UtilityCase {
 protected:
  ComCacheUtilityTest() { EXPECT_EQ(RunProgram("StandInCalendar.exe", "/unregister"), 0U); }
};

TEST_F(ComCacheUtilityTest, WithoutCalendarProgramTheNumberOfItsFailureArrives) {
  EXPECT_THAT(Refresh(), Pair(5, CO_E_CLASSSTRING));
  const std::set<DWORD> processes = Utilities();
  EXPECT_EQ(processes.size(), 1U);
  EXPECT_FALSE(processes.contains(::GetCurrentProcessId()));
  EXPECT_THAT(Refresh(), Pair(5, CO_E_CLASSSTRING));
  EXPECT_EQ(Utilities(), processes) << "it is kept";
  ASSERT_EQ(errors_.size(), 2U);
  EXPECT_EQ(errors_[0].Number(), CO_E_CLASSSTRING);
}

TEST_F(ComCacheUtilityTest, EachUtilityHasAProcessThatEndsWithIt) {
  std::vector<std::unique_ptr<CacheUtility>> utilities;
  for (int i = 0; i < 2; ++i) {
    utilities.push_back(utilities_.Create([](short, long) {}));
    utilities.back()->Start(inputs_);
  }
  EXPECT_EQ(Utilities().size(), 3U) << "and the one that was not started yet";
  utilities.pop_back();
  EXPECT_TRUE(PumpUntil([] { return Utilities().size() == 2; }));
}

TEST_F(ComCacheUtilityTest, OneThatWasKilledIsStartedAnew) {
  EXPECT_THAT(Refresh(), Pair(5, testing::_));
  KillUtility();
  EXPECT_THAT(Refresh(), Pair(5, testing::_));
  KillUtility();
  PumpFor(100);
  EXPECT_THAT(Refresh(), Pair(5, testing::_));
  EXPECT_EQ(completions_.size(), 3U);
}

TEST_F(ComCacheUtilityTest, OneThatHangsIsEndedByForce) {
  EXPECT_THAT(Refresh(), Pair(5, testing::_));
  const std::set<DWORD> hung = Utilities();
  ASSERT_EQ(hung.size(), 1U);
  const KernelHandle threads(::CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
  THREADENTRY32 thread{};
  thread.dwSize = sizeof thread;
  for (BOOL more = ::Thread32First(threads.get(), &thread); more;
       more = ::Thread32Next(threads.get(), &thread)) {
    if (thread.th32OwnerProcessID != *hung.begin()) continue;
    const KernelHandle one(::OpenThread(THREAD_SUSPEND_RESUME, FALSE, thread.th32ThreadID));
    ::SuspendThread(one.get());
  }
  utility_.reset();
  EXPECT_TRUE(PumpUntil([] { return Utilities().empty(); }));
}

TEST_F(ComCacheUtilityTest, WithoutRegistrationItsCreationSaysSo) {
  EXPECT_EQ(RunProgram("vkrRefresh.exe", "-UNREGSERVER"), 0U);
  EXPECT_EQ(RunProgram("vkrRefresh.exe", "/unregserver"), 0U) << "nothing left to do";
  EXPECT_THAT(ErrorOf([&] { Create(); }).Description(), HasSubstr("is not installed"));
  EXPECT_EQ(RunProgram("vkrRefresh.exe", "/RegServer"), 0U);
  Create();
  EXPECT_THAT(Refresh(), Pair(5, testing::_));
}

TEST_F(ComCacheUtilityTest, ManyUtilitiesLeaveNoHandlesBehind) {
  const auto useOne = [&] {
    Create();
    EXPECT_THAT(Refresh(), Pair(5, testing::_));
    utility_.reset();
    EXPECT_TRUE(PumpUntil([] { return Utilities().empty(); }));
  };
  for (int warm = 0; warm < 2; ++warm) useOne();
  const HeldHandles before;
  for (int i = 0; i < 6; ++i) useOne();
  ExpectNoMoreThan(before);
}

}  // namespace
}  // namespace velkor
