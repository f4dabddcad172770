// tests/hosts/VkrRefreshTest.cpp: the cache utility whose client goes away, and killed at random.
#include <QElapsedTimer>
#include <QProcess>
#include <algorithm>
#include <cstdio>
#include <random>
#include <thread>

#include "platform/desktop/RefreshProtocol.h"
#include "tests/platform/desktop/RefreshCase.h"

namespace velkor {
namespace {

using refresh_protocol::Encode;
using testing::ElementsAre;
using testing::Pair;

class VkrRefresh : public RefreshCase {
 protected:
  void Start(const std::string& program = VKR_REFRESH) {
    process_.start(QString::fromStdString(program), {});
    ASSERT_TRUE(process_.waitForStarted());
  }
  void Send(const std::string& line) {
    process_.write(line.c_str());
    process_.waitForBytesWritten();
  }
  /// The result code of the next report; 0 when none comes.
  short Answer() {
    while (!process_.canReadLine()) {
      if (!process_.waitForReadyRead(20'000)) return 0;
    }
    const QByteArray line = process_.readLine().trimmed();
    const auto report = refresh_protocol::DecodeReport(line.toStdString());
    return report ? report->synchResult : short{0};
  }
  void End() {
    process_.closeWriteChannel();
    EXPECT_TRUE(process_.waitForFinished(20'000));
  }
  /// The cache utility beside a reader that never ends, which notes its process number in "pids".
  std::string UtilityWithSlowReader() const {
    QFile::copy(VKR_REFRESH, File("vkrRefresh"));
    Script("yearplan-read",
           "echo $$ >>'" + QByteArray::fromStdString(Path("pids")) + "'\nexec sleep 60\n");
    return Path("vkrRefresh");
  }
  bool AwaitEnd(pid_t process) {
    return Await([&] { return !IsRunning(process); });
  }

  QProcess process_;
};

TEST_F(VkrRefresh, DoesOneRefreshAfterAnotherAndEndsWhenItsClientHasNothingMoreToAsk) {
  const std::string start = Encode({InputsFor(Calendar(3))});
  Start();
  Send(start);
  EXPECT_EQ(Answer(), 1);
  // A stop that comes too late does not concern the next one.
  Send(Encode(refresh_protocol::Command{}));
  Send(start);
  EXPECT_EQ(Answer(), 1);
  End();
  EXPECT_EQ(process_.exitCode(), 0);
}

TEST_F(VkrRefresh, AClientThatGoesAwayEndsItInTheMiddleOfReading) {
  const RefreshInputs inputs = InputsFor(Calendar(3));
  Start(UtilityWithSlowReader());
  Send(Encode({inputs}));
  ASSERT_TRUE(Await([&] { return Processes().size() == 1; }));
  const pid_t reader = Processes()[0];
  EXPECT_TRUE(IsRunning(reader));
  End();
  EXPECT_TRUE(AwaitEnd(reader)) << "its reader ends with it";
  EXPECT_THAT(CacheFolder(), ElementsAre("~c.tmp")) << "which the next refresh takes over";
}

TEST_F(VkrRefresh, AStopInTheMiddleOfReadingCompletesWithNothingToReport) {
  const RefreshInputs inputs = InputsFor(Calendar(3));
  Create(UtilityWithSlowReader());
  utility_->Start(inputs);
  ASSERT_TRUE(Await([&] { return Processes().size() == 1; }));
  utility_->Stop();
  EXPECT_THAT(AwaitCompletion(), Pair(6, 0));
  EXPECT_TRUE(AwaitEnd(Processes()[0]));
  EXPECT_THAT(CacheFolder(), ElementsAre("~c.tmp"));
}

TEST_F(VkrRefresh, NonsenseFromTheClientEndsIt) {
  for (const char* line : {"garbage\n", "{}\n",
                           R"({"command":"start","viewYear":"2026"})"
                           "\n"}) {
    Start();
    Send(line);
    EXPECT_TRUE(process_.waitForFinished(20'000)) << line;
  }
}

/// VELKOR_KILLS sets how many; the long form says what it found.
TEST_F(VkrRefresh, AKillAtAnyMomentLeavesTheOldOrTheNewCacheFile) {
  const int kills = std::max(25, qEnvironmentVariableIntValue("VELKOR_KILLS"));
  const QByteArray calendars[] = {Calendar(1500), Calendar(1500, "CATEGORIES:Leave\r\n")};
  const RefreshInputs inputs = InputsFor(calendars[0]);
  const auto refresh = [&](const QByteArray& calendar) {
    Write("a.ics", calendar);
    Start();
    Send(Encode({inputs}));
  };
  const auto refreshWhole = [&](const QByteArray& calendar) {
    refresh(calendar);
    EXPECT_EQ(Answer(), 1);
    End();
    EXPECT_THAT(CacheFolder(), ElementsAre("c.tmp"));
    return Bytes("cache/c.tmp");
  };
  const QByteArray whole[] = {refreshWhole(calendars[0]), refreshWhole(calendars[1])};
  ASSERT_NE(whole[0], whole[1]);
  // The quickest of some, so that most kills come before the end.
  qint64 longest = 10'000'000;
  for (int attempt = 0; attempt < 5; ++attempt) {
    QElapsedTimer clock;
    refresh(calendars[0]);
    clock.start();
    EXPECT_EQ(Answer(), 1);
    longest = std::min(longest, clock.nsecsElapsed() / 1000);
    End();
  }

  std::mt19937 random(2026);
  std::uniform_int_distribution<qint64> moment(0, longest);
  int broken = 0;
  int replaced = 0;
  int strays = 0;
  for (int kill = 1; kill <= kills; ++kill) {
    refresh(calendars[kill % 2]);
    std::this_thread::sleep_for(std::chrono::microseconds(moment(random)));
    ::kill(-static_cast<pid_t>(process_.processId()), SIGKILL);
    process_.kill();
    process_.waitForFinished();
    const QByteArray found = Bytes("cache/c.tmp");
    if (found != whole[0] && found != whole[1]) ++broken;
    if (found == whole[kill % 2]) ++replaced;
    if (CacheFolder().contains("~c.tmp")) ++strays;
    ASSERT_LE(CacheFolder().size(), 2);
  }
  EXPECT_EQ(broken, 0);
  EXPECT_LT(replaced, kills) << "no kill came before the end";
  EXPECT_EQ(refreshWhole(calendars[1]), whole[1]) << "what the killed left behind is taken over";
  std::printf(
      "%d kills within %lld us: %d broken cache files, %d showed the new year, "
      "%d left a work file\n",
      kills, static_cast<long long>(longest), broken, replaced, strays);
}

}  // namespace
}  // namespace velkor
