// tests/platform/desktop/ProcessCacheUtilityTest.cpp: the child process and all that ends it.
#include "platform/desktop/ProcessCacheUtility.h"

#include <QTimer>

#include "model/CacheRecord.h"
#include "platform/desktop/DesktopFiles.h"
#include "platform/desktop/DesktopLocale.h"
#include "tests/platform/desktop/RefreshCase.h"
#include "tests/support/ErrorOf.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

class ProcessCacheUtilityTest : public RefreshCase {
 protected:
  int RecordsInCache() const {
    const std::string bytes = Bytes("cache/c.tmp").toStdString();
    DesktopLocale locale;
    CacheRecordReader reader(bytes, locale);
    int count = 0;
    for (CalEvent event; reader.Next(event);) ++count;
    EXPECT_EQ(reader.Remaining(), 0U);
    return count;
  }
};

TEST_F(ProcessCacheUtilityTest, OneProcessWritesTheCacheFilesOfSeveralRefreshes) {
  RefreshInputs inputs = InputsFor(Bytes(SAMPLE_CALENDAR));
  Create(NumberedUtility());
  EXPECT_THAT(Refresh(inputs), Pair(1, 0));
  EXPECT_GT(RecordsInCache(), 10);
  EXPECT_THAT(CacheFolder(), ElementsAre("c.tmp"));
  inputs.viewYear = 1800;
  EXPECT_THAT(Refresh(inputs), Pair(1, 0));
  EXPECT_EQ(RecordsInCache(), 0);
  EXPECT_EQ(Processes().size(), 1U);
}

TEST_F(ProcessCacheUtilityTest, AFailureKeepsTheOldCacheFileAndRaisesTheWordsOfTheProcess) {
  const RefreshInputs inputs = InputsFor(Calendar(3));
  Create();
  ASSERT_THAT(Refresh(inputs), Pair(1, 0));
  const QByteArray before = Bytes("cache/c.tmp");

  QFile::remove(File("a.ics"));
  EXPECT_THAT(Refresh(inputs), Pair(7, errors::CalendarFailed));
  Write("a.ics", "no calendar\n");
  EXPECT_THAT(Refresh(inputs), Pair(7, errors::CalendarFailed));
  ASSERT_EQ(errors_.size(), 2U);
  EXPECT_EQ(errors_[0].Number(), errors::CalendarFailed);
  for (const Error& error : errors_) EXPECT_THAT(error.Description(), HasSubstr(Path("a.ics")));

  RefreshInputs never = inputs;
  never.firstMonth = 13;
  EXPECT_THAT(Refresh(never), Pair(7, errors::InvalidProcedureCall));
  EXPECT_EQ(Bytes("cache/c.tmp"), before);
  EXPECT_THAT(CacheFolder(), ElementsAre("c.tmp"));
}

TEST_F(ProcessCacheUtilityTest, WhatCannotBeWrittenHasItsOwnResult) {
  RefreshInputs inputs = InputsFor(Calendar(2000));
  Create();
  inputs.workFile = Path("no/such/folder/~c.tmp");
  EXPECT_THAT(Refresh(inputs), Pair(2, 0));
  inputs.workFile = Path("cache/~c.tmp");
  inputs.cacheFile = Path("cache");
  EXPECT_THAT(Refresh(inputs), Pair(3, 0));
  EXPECT_THAT(CacheFolder(), IsEmpty());

  inputs.cacheFile = Path("cache/c.tmp");
  Create(Script("full", "trap '' XFSZ\nulimit -f 4\nexec '" VKR_REFRESH "'\n"));
  EXPECT_THAT(Refresh(inputs), Pair(8, errors::DeviceInputOutput));
  EXPECT_THAT(CacheFolder(), IsEmpty());
}

TEST_F(ProcessCacheUtilityTest, AWorkFileThatAnotherWindowHoldsIsWaitedFor) {
  const RefreshInputs inputs = InputsFor(Calendar(3));
  DesktopFiles files;
  auto held = files.OpenForWriting(inputs.workFile);
  Create();
  utility_->Start(inputs);
  QTimer::singleShot(400, [&] {
    EXPECT_THAT(completions_, IsEmpty());
    files.Delete(inputs.workFile);
    held.reset();
  });
  EXPECT_THAT(AwaitCompletion(), Pair(1, 0));
  EXPECT_EQ(RecordsInCache(), 3);
}

TEST_F(ProcessCacheUtilityTest, AStopIsHeardWhileItWaits) {
  const RefreshInputs inputs = InputsFor(Calendar(3));
  const auto held = DesktopFiles().OpenForWriting(inputs.workFile);
  Create();
  utility_->Stop();
  utility_->Start(inputs);
  utility_->Stop();
  EXPECT_THAT(completions_, IsEmpty()) << "never from within a call";
  EXPECT_THAT(AwaitCompletion(), Pair(6, 0));
  EXPECT_EQ(Bytes("cache/c.tmp"), "none");
}

TEST_F(ProcessCacheUtilityTest, AProcessThatIsKilledCompletesOnceAndTheNextStartMakesAnother) {
  const RefreshInputs inputs = InputsFor(Calendar(3));
  Create(NumberedUtility());
  for (const int expected : {7, 6}) {
    const auto held = DesktopFiles().OpenForWriting(inputs.workFile);
    const std::size_t before = Processes().size();
    utility_->Start(inputs);
    ASSERT_TRUE(Await([&] { return Processes().size() > before; }));
    ::kill(Processes().back(), SIGSTOP);
    if (expected == 6) utility_->Stop();
    ::kill(Processes().back(), SIGKILL);
    EXPECT_THAT(AwaitCompletion(), Pair(expected, 0));
  }
  // One that is killed between two refreshes reports nothing.
  EXPECT_THAT(Refresh(inputs), Pair(1, 0));
  ::kill(Processes().back(), SIGKILL);
  ASSERT_TRUE(Await([&] { return !IsRunning(Processes().back()); }));
  for (int round = 0; round < 50; ++round) shell_.ProcessMessages();
  EXPECT_THAT(Refresh(inputs), Pair(1, 0));
  EXPECT_EQ(completions_.size(), 4U);
  EXPECT_EQ(Processes().size(), 4U);
}

TEST_F(ProcessCacheUtilityTest, AProgramThatIsNoCacheUtilityCompletesAsFailed) {
  const RefreshInputs inputs = InputsFor(Calendar(3));
  const std::pair<const char*, Completion> programs[] = {
      {"read line\necho '{\"synchResult\":42,\"synchError\":9}'\nread line", {42, 9}},
      {"read line\necho '{\"synchResult\":1.5,\"synchError\":0}'\nread line", {7, 0}},
      {"read line\necho '{\"synchResult\":70000,\"synchError\":0}'\nread line", {7, 0}},
      {"read line\necho garbage\nread line", {7, 0}},
      {"head -c 2000000 /dev/zero\nread line\nread line", {7, 0}},
      {"read line\nprintf '{\"synchResult\":1,\"synchError\":0}'", {7, 0}},
      {"exit 0", {7, 0}},
      {"kill -SEGV $$", {7, 0}},
  };
  for (const auto& [lines, expected] : programs) {
    Create(Script("fake", lines));
    EXPECT_EQ(Refresh(inputs), expected) << lines;
  }
  for (const std::string& none : {Path("absent"), Path("a.ics"), Path("cache")}) {
    EXPECT_THAT(ErrorOf([&] { Create(none); }).Description(), HasSubstr(none));
  }
  const std::string broken = Script("broken", {});
  Write("broken", "#!/no/such/shell\n");
  Create(broken);
  utility_->Start(inputs);
  EXPECT_THROW(utility_->Start(inputs), Error) << "one at a time";
  EXPECT_THAT(AwaitCompletion(), Pair(7, 0));
}

TEST_F(ProcessCacheUtilityTest, OneThatIsDestroyedKillsAHungProcessAtOnceAndReportsNothing) {
  const RefreshInputs inputs = InputsFor(Calendar(3));
  Create(NumberedUtility());
  utility_->Start(inputs);
  ASSERT_TRUE(Await([&] { return Processes().size() == 1; }));
  ::kill(Processes()[0], SIGSTOP);
  const auto began = std::chrono::steady_clock::now();
  utility_.reset();
  EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::milliseconds(500));
  EXPECT_TRUE(Await([&] { return !IsRunning(Processes()[0]); }));
  EXPECT_THAT(completions_, IsEmpty());
  EXPECT_EQ(Bytes("cache/c.tmp"), "none");
}

TEST_F(ProcessCacheUtilityTest, ACompletionMayDestroyTheUtility) {
  const RefreshInputs inputs = InputsFor(Calendar(3));
  for (const char* lines : {"exec '" VKR_REFRESH "'", "exit 0"}) {
    bool completed = false;
    ProcessCacheUtilities utilities({}, Script("any", lines));
    utility_ = utilities.Create([&](short, long) {
      utility_.reset();
      completed = true;
      throw Error(5, "nobody listens");
    });
    utility_->Start(inputs);
    EXPECT_TRUE(Await([&] { return completed; }));
  }
}

}  // namespace
}  // namespace velkor
