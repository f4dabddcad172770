// tests/hosts/YearplanTest.cpp: the program as its users start it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <nlohmann/json.hpp>

#include "tests/hosts/YearplanCase.h"
#include "tests/platform/desktop/CalendarText.h"

namespace velkor {
namespace {

using testing::HasSubstr;

TEST_F(Yearplan, DrawsACalendarThatIsOnlyNamed) {
  Write("team.ics", Calendar(30));
  const Outcome outcome = Run({"team.ics", "--year", "2026", "--size", "800x600"});
  EXPECT_EQ(outcome.code, 0) << outcome.messages;
  EXPECT_THAT(outcome.out, HasSubstr("Year 2026, 30 events"));
  EXPECT_THAT(outcome.out, HasSubstr(Path("team.png")));
  EXPECT_EQ(QImage(File("team.png")).size(), QSize(800, 600));
  EXPECT_EQ(outcome.messages, "");
}

TEST_F(Yearplan, DrawsPdfAndSvgAndLeavesTheCalendarAsItWas) {
  const QByteArray calendar = Calendar(5);
  Write("team.ics", calendar);
  for (const char* name : {"a.pdf", "a.svg"}) {
    EXPECT_EQ(Run({"render", "team.ics", "--year", "2026", "-o", name}).code, 0);
  }
  EXPECT_TRUE(Bytes("a.pdf").startsWith("%PDF"));
  EXPECT_TRUE(Bytes("a.svg").contains("Event 3"));
  EXPECT_EQ(Bytes("team.ics"), calendar);
}

TEST_F(Yearplan, DrawsASetWithItsDaysOffInTheColoursThatItWants) {
  Write("team.ics", CalendarOf(Event("1", "DTSTART;VALUE=DATE:20260105\r\nSUMMARY:Trip\r\n")));
  Write("days.ics", CalendarOf(Event("2", "DTSTART;VALUE=DATE:20260106\r\nSUMMARY:Epiphany\r\n")));
  for (const QByteArray colours : {"category", "calendar"}) {
    Write("a.yearplan", R"({"yearplan": 1, "colours": ")" + colours + R"(", "calendars": [
                {"id": "0000000a", "file": "team.ics", "colour": "#28005a"},
                {"id": "0000000b", "file": "days.ics", "background": true}]})");
    const auto json = nlohmann::json::parse(
        Run({"inspect", "a.yearplan", "--year", "2026", "--json"}).out, nullptr, false);
    EXPECT_EQ(json.at("events").size(), 1U);
    EXPECT_EQ(
        json.at("daysOff").dump(),
        R"([{"first":"2026-01-06T00:00:00","last":"2026-01-06T00:00:00","name":"Epiphany"}])");
    EXPECT_EQ(Run({"render", "a.yearplan", "--year", "2026", "-o", "a.svg"}).code, 0);
    EXPECT_TRUE(Bytes("a.svg").contains("#d6ecdc"));
    EXPECT_EQ(Bytes("a.svg").contains("#28005a"), colours == "calendar");
  }
}

TEST_F(Yearplan, CacheFileHoldsTheYear) {
  Write("team.ics", Calendar(10));
  ASSERT_EQ(Run({"refresh", "team.ics", "--year", "2026"}).code, 0);
  const QString cache = CacheFile();
  const Outcome outcome = Run({"inspect", "--cache", cache, "--year", "2026", "--json"});
  ASSERT_EQ(outcome.code, 0) << outcome.messages;
  const auto json = nlohmann::json::parse(outcome.out);
  EXPECT_EQ(json.at("events").size(), 10U);
  EXPECT_EQ(json.at("events").at(0).at("subject"), "Event 0");
  EXPECT_FALSE(json.contains("hits"));
}

TEST_F(Yearplan, APictureGrowsWithTheGridUpToTheLimitOfItsKind) {
  // 200 bands that can be read are taller than 2000 pixels; 4000 are too many for PNG.
  const auto crowded = [](int events) {
    QByteArray text;
    for (int i = 0; i < events; ++i) {
      text += Event(QByteArray::number(i), "DTSTART;VALUE=DATE:20260105\r\n");
    }
    return CalendarOf(text);
  };
  Write("a.ics", crowded(200));
  ASSERT_EQ(Run({"render", "a.ics", "--year", "2026", "--size", "800x500", "-o", "a.png"}).code, 0);
  EXPECT_GT(QImage(File("a.png")).height(), 2000);
  Write("b.ics", crowded(4000));
  const Outcome outcome = Run({"render", "b.ics", "--year", "2026", "-o", "b.png"});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.messages, AllOf(HasSubstr("20000"), HasSubstr(".svg")));
  EXPECT_FALSE(QFile::exists(File("b.png")));
  for (const char* other : {"b.svg", "b.pdf"}) {
    EXPECT_EQ(Run({"render", "b.ics", "--year", "2026", "-o", other}).code, 0) << other;
  }
}

}  // namespace
}  // namespace velkor
