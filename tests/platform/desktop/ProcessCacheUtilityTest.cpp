// tests/platform/desktop/ProcessCacheUtilityTest.cpp: refreshes by the worker, and all that ends
// it.
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

TEST_F(ProcessCacheUtilityTest, EachRefreshIsOneProcess) {
  RefreshInputs inputs = InputsFor(Bytes(SAMPLE_CALENDAR));
  Create(NumberedUtility());
  EXPECT_THAT(Refresh(inputs), Pair(1, 0));
  EXPECT_GT(RecordsInCache(), 10);
  EXPECT_THAT(CacheFolder(), ElementsAre("c.tmp"));
  inputs.viewYear = 1800;
  EXPECT_THAT(Refresh(inputs), Pair(1, 0));
  EXPECT_EQ(RecordsInCache(), 0);
  ASSERT_EQ(Processes().size(), 2U);
  EXPECT_NE(Processes()[0], Processes()[1]);
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
  Create(Script("full", "trap '' XFSZ\nulimit -f 4\nexec '" VKR_REFRESH "' \"$@\"\n"));
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

TEST_F(ProcessCacheUtilityTest, AStopEndsItAtOnce) {
  const RefreshInputs inputs = InputsFor(Calendar(3));
  const auto held = DesktopFiles().OpenForWriting(inputs.workFile);
  Create(NumberedUtility());
  utility_->Stop();
  utility_->Start(inputs);
  EXPECT_THROW(utility_->Start(inputs), Error) << "one at a time";
  ASSERT_TRUE(Await([&] { return Processes().size() == 1; }));
  ::kill(Processes()[0], SIGSTOP);
  utility_->Stop();
  EXPECT_THAT(completions_, IsEmpty()) << "never from within a call";
  EXPECT_THAT(AwaitCompletion(), Pair(6, 0));
  EXPECT_FALSE(IsRunning(Processes()[0]));
  EXPECT_EQ(Bytes("cache/c.tmp"), "none");
}

/// What becomes of a refresh whose worker dies, hangs or tells nonsense.
TEST_F(ProcessCacheUtilityTest, AWorkerThatDiesCompletesAsFailedAndSaysWhy) {
  const RefreshInputs inputs = InputsFor(Calendar(3));
  const struct {
    const char* lines;
    Completion expected;
    const char* words;
  } workers[] = {
      {"echo '42 9 all is well'", {42, 9}, "all is well"},
      {"echo '42 9 '", {42, 9}, "plain"},
      {"echo '1.5 0 '", {7, errors::CalendarFailed}, "gave no answer"},
      {"echo '70000 0 '", {7, errors::CalendarFailed}, "gave no answer"},
      {"echo garbage", {7, errors::CalendarFailed}, "gave no answer"},
      {"printf '1 0 '", {7, errors::CalendarFailed}, "gave no answer"},
      {"exit 0", {7, errors::CalendarFailed}, "gave no answer"},
      {"exit 3", {7, errors::CalendarFailed}, "stopped with exit code 3"},
      {"kill -SEGV $$", {7, errors::CalendarFailed}, "stopped with signal 11"},
      {"kill -KILL $$", {7, errors::CalendarFailed}, "stopped with signal 9"},
      {"kill -XCPU $$", {7, errors::CalendarFailed}, "took longer than 30000 ms"},
      {"kill -ALRM $$", {7, errors::CalendarFailed}, "took longer than 30000 ms"},
  };
  for (const auto& [lines, expected, words] : workers) {
    Create(Script("fake", lines));
    EXPECT_EQ(Refresh(inputs), expected) << lines;
    EXPECT_THAT(errors_.back().Description(), HasSubstr(words));
  }
  const std::string broken = Script("broken", {});
  Write("broken", "#!/no/such/shell\n");
  Create(broken);
  EXPECT_THAT(Refresh(inputs), Pair(7, errors::CalendarFailed));
  EXPECT_THAT(errors_.back().Description(), HasSubstr("could not be started"));
  for (const std::string& none : {Path("absent"), Path("a.ics"), Path("cache")}) {
    EXPECT_THAT(ErrorOf([&] { Create(none); }).Description(), HasSubstr(none));
  }
}

TEST_F(ProcessCacheUtilityTest, OneThatIsDestroyedKillsAHungProcessAtOnceAndReportsNothing) {
  const RefreshInputs inputs = InputsFor(Calendar(3));
  Create(NumberedUtility());
  utility_->Start(inputs);
  ASSERT_TRUE(Await([&] { return Processes().size() == 1; }));
  ::kill(Processes()[0], SIGSTOP);
  utility_.reset();
  EXPECT_TRUE(Await([&] { return !IsRunning(Processes()[0]); }));
  EXPECT_THAT(completions_, IsEmpty());
  EXPECT_EQ(Bytes("cache/c.tmp"), "none");
}

TEST_F(ProcessCacheUtilityTest, ACompletionMayDestroyTheUtility) {
  const RefreshInputs inputs = InputsFor(Calendar(3));
  for (const char* lines : {"exec '" VKR_REFRESH "' \"$@\"", "exit 0"}) {
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
