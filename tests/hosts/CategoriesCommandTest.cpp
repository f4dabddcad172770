// tests/hosts/CategoriesCommandTest.cpp: `yearplan categories` killed at any moment.
#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <algorithm>
#include <chrono>
#include <random>
#include <thread>

#include "tests/hosts/YearplanCase.h"
#include "tests/platform/desktop/CalendarText.h"

namespace velkor {
namespace {

class CategoriesCommand : public Yearplan {};

/// VELKOR_KILLS sets how many; the long form says what it found.
TEST_F(CategoriesCommand, OfTwoThatAreKilledAtAnyMomentNothingIsLost) {
  const int kills = std::max(8, qEnvironmentVariableIntValue("VELKOR_KILLS"));
  constexpr int Appointments = 200;
  Write("team.ics", Calendar(Appointments, "CATEGORIES:Leave\r\n"));
  QElapsedTimer clock;
  clock.start();
  ASSERT_EQ(Run({"categories", "team.ics", "new", "First"}).code, 0);
  std::mt19937 random(2026);
  // Most of them when it saves, near its end.
  const qint64 whole = clock.elapsed();
  std::uniform_int_distribution<qint64> moment(whole / 2, whole * 2);

  QList<QByteArray> kept{"First"};
  QByteArray carried = "Leave";
  int renamed = 0;
  for (int round = 1; 2 * round <= kills; ++round) {
    const QByteArray number = QByteArray::number(round);
    QProcess adds;
    QProcess renames;
    Start(adds, {"categories", "team.ics", "new", "N" + number});
    Start(renames, {"categories", "team.ics", "rename", carried, "R" + number});
    std::this_thread::sleep_for(std::chrono::milliseconds(moment(random)));
    adds.kill();
    std::this_thread::sleep_for(std::chrono::milliseconds(moment(random) / 4));
    renames.kill();
    ASSERT_TRUE(adds.waitForFinished() && renames.waitForFinished());
    const auto isDone = [](const QProcess& process) {
      const bool ended = process.exitStatus() == QProcess::NormalExit;
      EXPECT_TRUE(!ended || process.exitCode() == 0);
      return ended;
    };
    if (isDone(adds)) kept << "N" + number;

    const QByteArray text = Bytes("team.ics").replace("\r\n ", "");
    const auto isListed = [&](const QByteArray& name) { return text.contains("\\n" + name + "|"); };
    ASSERT_TRUE(text.endsWith("END:VCALENDAR\r\n"));
    ASSERT_EQ(text.count("SUMMARY:Event "), Appointments);
    for (const QByteArray& name : kept) ASSERT_TRUE(isListed(name)) << name.toStdString();
    const bool changed = text.count("CATEGORIES:R" + number + "\r\n") == Appointments;
    if (changed) carried = "R" + number;
    if (changed) ++renamed;
    ASSERT_EQ(text.count("CATEGORIES:" + carried + "\r\n"), Appointments);
    ASSERT_TRUE(isListed(carried));
    ASSERT_TRUE(changed || !isDone(renames));
  }
  std::printf("%d kills: %d categories were added, %d times all appointments were renamed\n", kills,
              static_cast<int>(kept.size()) - 1, renamed);
}

}  // namespace
}  // namespace velkor
