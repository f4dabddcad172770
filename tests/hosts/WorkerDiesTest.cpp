// tests/hosts/WorkerDiesTest.cpp: the worker killed at random, left alone by its client, and
// bounded.
#include <QElapsedTimer>
#include <QProcess>
#include <algorithm>
#include <cstdio>
#include <random>
#include <thread>

#include "platform/desktop/DesktopFiles.h"
#include "tests/platform/desktop/RefreshCase.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class WorkerDies : public RefreshCase {
 protected:
  static QStringList JobOf(const RefreshInputs& inputs, qint64 memory = qint64{1} << 31) {
    QStringList job{QString::number(memory), "30", "year", QString::number(inputs.viewYear),
                    QString::number(inputs.firstMonth)};
    for (const std::string& text :
         {inputs.cacheFile, inputs.workFile, inputs.folderId, inputs.storeId}) {
      job += QString::fromStdString(text);
    }
    return job;
  }
  void Start(const QStringList& arguments) {
    process_.start(VKR_REFRESH, arguments, QIODevice::ReadOnly);
    ASSERT_TRUE(process_.waitForStarted());
  }
  /// What the worker says at its end.
  std::string Answer() {
    EXPECT_TRUE(process_.waitForFinished(20'000));
    return process_.readAllStandardOutput().toStdString();
  }

  QProcess process_;
};

TEST_F(WorkerDies, WhatIsNoJobIsTold) {
  for (const char* job : {"", "0 30 year 2026 1 c w f s", "9 x year 2026 1 c w f s",
                          "9 9 year 2026 1 c w f", "9 9 year 2026.5 1 c w f s", "9 9 items a.ics 0",
                          "9 9 items a.ics 0 99999999999999", "9 9 months 2026 1 c w f s"}) {
    Start(QString(job).split(' ', Qt::SkipEmptyParts));
    EXPECT_EQ(Answer(), "") << job;
    EXPECT_EQ(process_.exitCode(), 2) << job;
    EXPECT_THAT(process_.readAllStandardError().toStdString(), StartsWith("usage: ")) << job;
  }
}

TEST_F(WorkerDies, WantOfMemoryIsAnAnswer) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the memory of a sanitized process cannot be bounded";
#endif
  Start(JobOf(InputsFor(Calendar(20'000, "DESCRIPTION:" + QByteArray(2000, 'x') + "\r\n")),
              qint64{120} << 20));
  EXPECT_THAT(Answer(), HasSubstr("a.ics needs more memory than is allowed."));
  EXPECT_THAT(CacheFolder(), testing::IsEmpty());
}

TEST_F(WorkerDies, AClientThatIsKilledEndsIt) {
  const RefreshInputs inputs = InputsFor(Calendar(3));
  const auto held = DesktopFiles().OpenForWriting(inputs.workFile);
  const std::string client =
      Script("client", "'" VKR_REFRESH "' \"$@\" &\necho $! >'" +
                           QByteArray::fromStdString(Path("pids")) + "'\nwait\n");
  process_.start(QString::fromStdString(client), JobOf(inputs));
  ASSERT_TRUE(Await([&] { return Processes().size() == 1; }));
  // It waits for the work file, so that it would go on by itself.
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  EXPECT_TRUE(IsRunning(Processes()[0]));
  process_.kill();
  EXPECT_TRUE(process_.waitForFinished(20'000));
  EXPECT_TRUE(Await([&] { return !IsRunning(Processes()[0]); }));
}

/// VELKOR_KILLS sets how many; the long form says what it found.
TEST_F(WorkerDies, AKillAtAnyMomentLeavesTheOldOrTheNewCacheFile) {
  const int kills = std::max(25, qEnvironmentVariableIntValue("VELKOR_KILLS"));
  const QByteArray calendars[] = {Calendar(1500), Calendar(1500, "CATEGORIES:Leave\r\n")};
  const RefreshInputs inputs = InputsFor(calendars[0]);
  const auto refresh = [&](const QByteArray& calendar) {
    Write("a.ics", calendar);
    Start(JobOf(inputs));
  };
  const auto refreshWhole = [&](const QByteArray& calendar) {
    refresh(calendar);
    EXPECT_EQ(Answer(), "1 0 \n");
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
    EXPECT_EQ(Answer(), "1 0 \n");
    longest = std::min(longest, clock.nsecsElapsed() / 1000);
  }

  std::mt19937 random(2026);
  std::uniform_int_distribution<qint64> moment(0, longest + longest / 4);
  int broken = 0;
  int replaced = 0;
  int strays = 0;
  for (int kill = 1; kill <= kills; ++kill) {
    const int next = Bytes("cache/c.tmp") == whole[0] ? 1 : 0;
    refresh(calendars[next]);
    std::this_thread::sleep_for(std::chrono::microseconds(moment(random)));
    process_.kill();
    process_.waitForFinished();
    const QByteArray found = Bytes("cache/c.tmp");
    if (found != whole[0] && found != whole[1]) ++broken;
    if (found == whole[next]) ++replaced;
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
