// tests/hosts/CategoriesCommandTest.cpp: `yearplan categories` as its users start it.
#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <algorithm>
#include <chrono>
#include <random>
#include <thread>

#include "model/ColourRecord.h"
#include "tests/hosts/YearplanCase.h"
#include "tests/platform/desktop/CalendarText.h"

namespace velkor {
namespace {

using testing::HasSubstr;

class CategoriesCommand : public Yearplan {
 protected:
  Outcome Categories(const QStringList& words) const {
    return Run(QStringList{"categories", "team.ics"} + words);
  }
  /// A calendar with one event in Leave and a colour record.
  void WriteWithRecord(std::string_view subject, const QByteArray& lines) const {
    Write("team.ics",
          CalendarOf(Event("a", "DTSTART;VALUE=DATE:20260101\r\nCATEGORIES:Leave\r\n") +
                     Event("c", "SUMMARY:" + QByteArray::fromStdString(std::string(subject)) +
                                    "\r\nDTSTART:20110101T013000\r\n"
                                    "DESCRIPTION:--DO NOT EDIT LIST MANUALLY--\\n" +
                                    lines + "\r\n")));
  }
};

TEST_F(CategoriesCommand, ChangesAreThereInTheNextRun) {
  const char* const odd = "\"Q\" | 'x', A,B; \\n 🎉";
  const std::string cleaned = "\"Q\"  'x', A,B; \\n 🎉";
  Write("team.ics", Calendar(2, "CATEGORIES:Leave\r\n"));
  const QByteArray calendar = Bytes("team.ics");
  EXPECT_EQ(Categories({}).out, "#128AFF  Leave\n#CCCCCC  Other\n");
  EXPECT_EQ(Bytes("team.ics"), calendar);

  const auto now = [&] { return Categories({"list"}).out; };
  EXPECT_EQ(Categories({"new", odd}).out,
            "#128AFF  Leave\n#0000FF  " + cleaned + "\n#CCCCCC  Other\n");
  EXPECT_EQ(Bytes("team.ics").count("BEGIN:VEVENT"), 3);
  EXPECT_EQ(Categories({"recolour", cleaned.c_str(), "#fe00a0"}).code, 0);
  EXPECT_EQ(now(), "#128AFF  Leave\n#FE00A0  " + cleaned + "\n#CCCCCC  Other\n");
  EXPECT_EQ(Categories({"rename", "Leave", "-休暇", "--hide-non-category"}).code, 2);
  EXPECT_EQ(Categories({"--hide-non-category", "--", "rename", "Leave", "-休暇"}).code, 0);
  EXPECT_EQ(Bytes("team.ics").count("CATEGORIES:-休暇\r\n"), 2);
  EXPECT_EQ(Categories({"rename", "Other", "Rest", "--list-only"}).code, 0);
  EXPECT_EQ(Categories({"--list-only", "--", "rename", "-休暇", "Leave"}).code, 0);
  EXPECT_EQ(Categories({"--", "rename", "Leave", "-休暇"}).code, 0);
  EXPECT_EQ(Categories({"rename", "Rest", "Other"}).code, 0);
  EXPECT_EQ(Bytes("team.ics").count("CATEGORIES:-休暇\r\n"), 2);
  EXPECT_EQ(Categories({"new", "New", "--list-only"}).code, 2);
  EXPECT_EQ(Categories({"--hide-non-category", "new", "Last"}).code, 0);
  EXPECT_EQ(Categories({"delete", cleaned.c_str()}).code, 0);
  EXPECT_EQ(now(), "#128AFF  -休暇\n#CCCCCC  Other\n#0000FF  Last\n");
  EXPECT_EQ(Bytes("team.ics").count("BEGIN:VEVENT"), 3);
  EXPECT_EQ(Categories({"--", "rename", "-休暇", "Leave"}).code, 0);
  EXPECT_EQ(Categories({"--title", "Rooms"}).out, "#128AFF  Leave\n#CCCCCC  Other\n");
}

TEST_F(CategoriesCommand, OfTwoNamesThatAreAlikeTheFirstIsMeant) {
  WriteWithRecord(colour_record::SubjectOf("Default"), "A|1\\nA|2\\nB|3");
  EXPECT_EQ(Categories({"delete", "A"}).out, "#020000  A\n#030000  B\n");
}

TEST_F(CategoriesCommand, ATitleMayHaveAnApostrophe) {
  WriteWithRecord(colour_record::SubjectOf("O'Brien"), "A|1\\nB|2");
  EXPECT_EQ(Categories({"delete", "A", "--title", "O'Brien"}).out, "#020000  B\n");
}

TEST_F(CategoriesCommand, ARecordInTheOlderFormBecomesTheTitlesOwnWithTheFirstChange) {
  WriteWithRecord(colour_record::LegacySubject, "A|1\\nB|2");
  const QByteArray calendar = Bytes("team.ics");
  EXPECT_EQ(Categories({"rename", "A", "B"}).code, 1);
  EXPECT_EQ(Bytes("team.ics"), calendar);
  EXPECT_EQ(Categories({"rename", "A", "C"}).out, "#010000  C\n#020000  B\n");
  EXPECT_EQ(Categories({}).out, "#010000  C\n#020000  B\n");
  EXPECT_EQ(Bytes("team.ics").count("BEGIN:VEVENT"), 2);
}

TEST_F(CategoriesCommand, WhatIsRefusedLeavesTheCalendarAsItWas) {
  WriteWithRecord(colour_record::SubjectOf("Default"), "A|1\\nB|2");
  QFile file(File("team.ics"));
  const QByteArray calendar = Bytes("team.ics");
  const std::pair<QStringList, const char*> refusals[] = {
      {{"delete", "a"}, "There is no category \"a\""},
      {{"rename", "a", "C"}, "There is no category \"a\""},
      {{"rename", "A", "B"}, "The category B already exists"},
      {{"new", "B"}, "The category \"B\" already exists"},
      {{"new", " B "}, "The category \"B\" already exists"},
      {{"new", "|B"}, "The category \"B\" already exists"},
      {{"rename", "A", "C,D"}, "No appointment can carry the category \"C,D\""},
      {{"recolour", "A", "#020000"}, "This colour has already been used."},
  };
  for (const auto& [words, message] : refusals) {
    const Outcome outcome = Categories(words);
    EXPECT_EQ(outcome.code, 1) << message;
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.messages, HasSubstr(message));
  }
  file.setPermissions(QFile::ReadOwner);
  const Outcome locked = Categories({"new", "C"});
  EXPECT_EQ(locked.code, 1);
  EXPECT_THAT(locked.messages, HasSubstr("team.ics could not be saved"));
  file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
  EXPECT_EQ(Bytes("team.ics"), calendar);

  WriteWithRecord(colour_record::SubjectOf("Default"), "A|1");
  EXPECT_THAT(Categories({"delete", "A"}).messages, HasSubstr("at least one must be retained"));
}

TEST_F(CategoriesCommand, ABrokenListIsShownAsFarAsItGoesAndNeverSavedOver) {
  WriteWithRecord(colour_record::SubjectOf("Default"), "A|1\\nB\\nC|3");
  const QByteArray calendar = Bytes("team.ics");
  Outcome outcome = Categories({"list"});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.out, "#010000  A\n");
  EXPECT_THAT(outcome.messages, HasSubstr("\"B\""));
  outcome = Categories({"delete", "A"});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(Bytes("team.ics"), calendar);
}

/// VELKOR_KILLS sets how many; the long form says what it found.
TEST_F(CategoriesCommand, OfTwoThatAreKilledAtAnyMomentNothingIsLost) {
  const int kills = std::max(8, qEnvironmentVariableIntValue("VELKOR_KILLS"));
  constexpr int Appointments = 200;
  Write("team.ics", Calendar(Appointments, "CATEGORIES:Leave\r\n"));
  QElapsedTimer clock;
  clock.start();
  ASSERT_EQ(Categories({"new", "First"}).code, 0);
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
