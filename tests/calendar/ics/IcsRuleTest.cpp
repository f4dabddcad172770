// tests/calendar/ics/IcsRuleTest.cpp: rules against another program's answers, rules that begin
// long before the window, and rules that run away.
#include "calendar/ics/read/IcsRule.h"

#include <gmock/gmock.h>

#include <fstream>
#include <limits>
#include <sstream>

#include "tests/calendar/ics/IcsCase.h"
#include "values/Date.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::size_t Any = std::numeric_limits<std::size_t>::max();

const IcsZone floating{IcsZone::Floating{}};

WallSeconds At(std::string_view text) {
  return ReadTimeText(text).value_or(IcsTimeText{}).wall;
}

struct Expansion {
  std::vector<WallSeconds> starts;
  std::vector<std::string> remarks;
  bool areAll;
};

Expansion Expand(std::string_view rule, std::string_view first, std::string_view from,
                 std::string_view to, std::size_t most = Any) {
  const IcsTimeText text = ReadTimeText(first).value_or(IcsTimeText{});
  const IcsTime start{text.isDate, text.wall, &floating};
  IcsRule expanded(rule, start);
  RuleStarts found = expanded.StartsIn(At(from), At(to), most);
  return {std::move(found.starts), expanded.Remarks(), found.areAll};
}

/// Those of these starts, and of the seconds before them, that a rule gives when it is asked for
/// each.
std::vector<WallSeconds> AskedOneByOne(std::string_view rule, std::string_view first,
                                       const std::vector<WallSeconds>& starts) {
  const IcsTimeText text = ReadTimeText(first).value_or(IcsTimeText{});
  const IcsTime start{text.isDate, text.wall, &floating};
  IcsRule asked(rule, start);
  std::vector<WallSeconds> given;
  for (const WallSeconds one : starts) {
    for (const WallSeconds wall : {one - 1, one}) {
      const bool isNew = given.empty() || wall > given.back();
      if (isNew && asked.StartsAt(wall)) given.push_back(wall);
    }
  }
  return given;
}

/// Written by scripts/compare-rules.sh.
TEST(IcsRule, StoredRulesGiveWhatAnotherProgramFinds) {
  std::ifstream file(TEST_DATA "rules.txt");
  int rules = 0;
  for (std::string line; std::getline(file, line); ++rules) {
    std::istringstream words(line);
    std::string first;
    std::string from;
    std::string to;
    std::string rule;
    std::string expected;
    words >> first >> from >> to;
    std::getline(words.ignore(), rule, '|');
    std::getline(words, expected);
    std::vector<WallSeconds> starts = Expand(rule, first, from, to).starts;
    EXPECT_EQ(AskedOneByOne(rule, first, starts), starts) << line;
    if (first >= from && first <= to) starts.insert(starts.begin(), At(first));
    std::uint64_t checksum = 0;
    for (const WallSeconds wall : starts) {
      checksum = checksum * 1'000'003 + static_cast<std::uint64_t>(wall);
    }
    std::ostringstream found;
    found << starts.size() << ' ' << std::hex << checksum;
    EXPECT_EQ(found.str(), expected) << line;
  }
  EXPECT_EQ(rules, 400);
}

/// With and without a count that ends inside the window, so that what lies before is counted.
TEST(IcsRule, BeginningInTheMiddleGivesWhatBeginningAtTheStartGives) {
  for (const char* rule : {"FREQ=DAILY",
                           "FREQ=DAILY;INTERVAL=7",
                           "FREQ=DAILY;BYMONTH=2,12",
                           "FREQ=DAILY;INTERVAL=3;BYMONTHDAY=1,-1",
                           "FREQ=DAILY;BYHOUR=17,9;BYMINUTE=15,0;BYSETPOS=-1,3",
                           "FREQ=WEEKLY",
                           "FREQ=WEEKLY;INTERVAL=3;WKST=SU;BYDAY=SU,SA",
                           "FREQ=WEEKLY;INTERVAL=2;BYDAY=MO,WE;BYMONTH=5",
                           "FREQ=WEEKLY;INTERVAL=2;BYDAY=MO,WE,FR;BYSETPOS=-1,1",
                           "FREQ=WEEKLY;BYDAY=MO,WE,FR;BYMONTH=6,7;BYSETPOS=2",
                           "FREQ=MONTHLY;INTERVAL=5;BYMONTHDAY=31",
                           "FREQ=MONTHLY;BYDAY=2TU,-1FR",
                           "FREQ=MONTHLY;BYDAY=MO,TU,WE,TH,FR;BYSETPOS=-1",
                           "FREQ=MONTHLY;BYDAY=FR;BYMONTHDAY=13",
                           "FREQ=YEARLY;INTERVAL=2;BYMONTH=3,11;BYDAY=-1SU",
                           "FREQ=YEARLY;BYYEARDAY=1,100,-1",
                           "FREQ=YEARLY;BYWEEKNO=20;BYDAY=MO",
                           "FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=29",
                           "FREQ=YEARLY;INTERVAL=3;BYDAY=MO;BYSETPOS=1,-1",
                           "FREQ=HOURLY;INTERVAL=7",
                           "FREQ=HOURLY;INTERVAL=5;BYDAY=SA;BYHOUR=10,11,12",
                           "FREQ=HOURLY;INTERVAL=36;BYMINUTE=0,30",
                           "FREQ=HOURLY;INTERVAL=6;BYMONTHDAY=-1;BYMINUTE=50,20;BYSETPOS=2",
                           "FREQ=MINUTELY;INTERVAL=1000",
                           "FREQ=MINUTELY;INTERVAL=1001;BYDAY=TU",
                           "FREQ=SECONDLY;INTERVAL=10007;BYMONTH=3"}) {
    SCOPED_TRACE(rule);
    const char* first = "20200101T090000";
    const char* to = "20320301T000000";
    const WallSeconds from = At("20260304T050000");
    const auto isEarlier = [&](WallSeconds wall) { return wall < from; };
    Expansion whole = Expand(rule, first, first, to);
    EXPECT_THAT(whole.remarks, ElementsAre());
    const auto earlier = std::erase_if(whole.starts, isEarlier);
    EXPECT_EQ(Expand(rule, first, "20260304T050000", to).starts, whole.starts);
    ASSERT_GT(whole.starts.size(), 1U);
    for (const std::size_t more : {std::size_t{1}, whole.starts.size() - 1}) {
      // The first start counts, too.
      const std::string counted = rule + (";COUNT=" + std::to_string(1 + earlier + more));
      EXPECT_EQ(Expand(counted, first, "20260304T050000", to).starts,
                std::vector(whole.starts.begin(), whole.starts.begin() + std::ptrdiff_t(more)));
    }
    const std::string over = rule + (";COUNT=" + std::to_string(1 + earlier));
    EXPECT_THAT(Expand(over, first, "20260304T050000", to).starts, ElementsAre());
  }
}

TEST(IcsRule, WhatOtherProgramsReadOtherwiseIsAsTheStandardSays) {
  struct Case {
    const char* rule;
    const char* first;
    const char* to;
    std::vector<std::string> starts;
  };
  const std::vector<Case> cases{
      {"FREQ=YEARLY;BYMONTHDAY=15",
       "20260115T100000",
       "20260401",
       {"2026-02-15 10:00", "2026-03-15 10:00"}},
      {"FREQ=DAILY;BYHOUR=12,8;COUNT=4",
       "20260101T080000",
       "20270101",
       {"2026-01-01 12:00", "2026-01-02 08:00", "2026-01-02 12:00"}},
      {"FREQ=MONTHLY;BYDAY=1MO,WE;BYMONTHDAY=1,2,3,4,5,6,7,8",
       "20260701",
       "20260901",
       {"2026-07-06 00:00", "2026-07-08 00:00", "2026-08-03 00:00", "2026-08-05 00:00"}},
      // The weekday is the start's, and the days of week 52 belong to the year before.
      {"FREQ=YEARLY;BYWEEKNO=52", "20100102", "20120101", {"2011-01-01 00:00", "2011-12-31 00:00"}},
      {"FREQ=YEARLY;BYWEEKNO=-53;BYDAY=WE", "20270101", "20330101", {"2031-12-31 00:00"}},
      // The first week is a whole one, too.
      {"FREQ=WEEKLY;BYDAY=MO,TH;BYSETPOS=1",
       "20260108",
       "20260120",
       {"2026-01-12 00:00", "2026-01-19 00:00"}},
      {"FREQ=MINUTELY;BYSECOND=60,59",
       "20260101T000059",
       "20260101T000300",
       {"2026-01-01 00:01:59", "2026-01-01 00:02:59"}},
      // All-day occurrences begin at midnight.
      {"FREQ=DAILY;BYHOUR=9,17", "20260101", "20260103", {"2026-01-02 00:00", "2026-01-03 00:00"}},
      {"FREQ=HOURLY;INTERVAL=36", "20260101", "20260105", {"2026-01-04 00:00"}},
      {"FREQ=DAILY;UNTIL=20260103",
       "20260101T100000",
       "20270101",
       {"2026-01-02 10:00", "2026-01-03 10:00"}},
      {"FREQ=DAILY;UNTIL=20260103T100000",
       "20260101T100000",
       "20270101",
       {"2026-01-02 10:00", "2026-01-03 10:00"}},
      {"freq = yearly ; bymonth = 5,5 ;", "20260501", "20270601", {"2027-05-01 00:00"}},
      {"FREQ=YEARLY;INTERVAL=99999999999999", "20260101", "99991231", {}},
  };
  for (const Case& one : cases) {
    const Expansion found = Expand(one.rule, one.first, one.first, one.to);
    std::vector<std::string> starts;
    for (const WallSeconds wall : found.starts) starts.push_back(Words(Date::FromSeconds(wall)));
    EXPECT_EQ(starts, one.starts) << one.rule;
    EXPECT_THAT(found.remarks, ElementsAre()) << one.rule;
  }
}

/// Each of these would keep a plain search busy for hours.
TEST(IcsRule, NoRuleRunsAway) {
  std::string sixty(1, '0');
  for (int i = 1; i < 60; ++i) sixty.append(",").append(std::to_string(i));
  for (const std::string& rule :
       {std::string("FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30;COUNT=5"),
        std::string("FREQ=SECONDLY;INTERVAL=7;BYMONTH=2;BYMONTHDAY=30;COUNT=5"),
        std::string("FREQ=SECONDLY;INTERVAL=2;BYSECOND=1,3,5"),
        std::string("FREQ=SECONDLY;BYSETPOS=2"), std::string("FREQ=SECONDLY;COUNT=1000000"),
        std::string("FREQ=MINUTELY;BYDAY=MO;BYMONTH=1;BYYEARDAY=200"),
        std::string("FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30;BYSECOND=" + sixty),
        std::string("FREQ=YEARLY;BYYEARDAY=366;BYMONTH=1"),
        std::string("FREQ=MONTHLY;BYDAY=MO;BYSETPOS=9"),
        std::string("FREQ=WEEKLY;BYDAY=MO;BYSETPOS=-3;COUNT=2")}) {
    const Expansion found = Expand(rule, "01000101T000000", "20260101", "20281231");
    EXPECT_THAT(found.starts, ElementsAre()) << rule;
    EXPECT_THAT(found.remarks, ElementsAre()) << rule;
  }
  for (const std::string& rule :
       {std::string("FREQ=SECONDLY"), std::string("FREQ=SECONDLY;COUNT=99999999999"),
        "FREQ=YEARLY;BYHOUR=9,1;BYSECOND=" + sixty + ";BYMINUTE=" + sixty}) {
    const Expansion found = Expand(rule, "19700101T000000", "20260101", "20281231", 1000);
    EXPECT_EQ(found.starts.size(), 1000U) << rule;
    EXPECT_FALSE(found.areAll) << rule;
  }
}

TEST(IcsRule, WhatIsWrongWithARuleIsSaid) {
  const auto remark = [](const std::string& rule) {
    const Expansion found = Expand(rule, "20260101", "20260101", "20260105");
    return found.remarks.size() == 1 ? found.remarks[0] : std::to_string(found.remarks.size());
  };
  EXPECT_EQ(remark("FREQ=NEVER"),
            "has FREQ \"NEVER\", which is no frequency; it adds no occurrence");
  for (const char* rule :
       {"FREQ=DAILY;INTERVAL=0", "FREQ=DAILY;COUNT=0", "FREQ=DAILY;COUNT=-1",
        "FREQ=DAILY;COUNT=99999999999999999999", "FREQ=DAILY;UNTIL=soon", "", "BYDAY=MO",
        "FREQ=DAILY;BYHOUR=25,9", "FREQ=DAILY;BYDAY=XX", "FREQ=DAILY;BYDAY=0MO",
        "FREQ=DAILY;BYDAY=,", "FREQ=DAILY;BYDAY=M", "FREQ=MONTHLY;BYMONTHDAY=0",
        "FREQ=YEARLY;BYMONTH=-1", "FREQ=DAILY;BYSETPOS=367", "FREQ=WEEKLY;WKST=1",
        "RSCALE=CHINESE;FREQ=YEARLY"}) {
    EXPECT_THAT(remark(rule), HasSubstr("; it adds no occurrence")) << rule;
  }
  // What is not known is left out, and the rest followed.
  EXPECT_EQ(
      remark("FREQ=DAILY;X-EASTER=1;BYEASTER=0;Y"),
      "has a part that is not known, \"X-EASTER=1\" and 2 more such parts; it is passed over");
  EXPECT_EQ(remark("FREQ=DAILY;BYHOUR=1;BYHOUR=2"), "has a second BYHOUR \"2\"; it is passed over");
  EXPECT_EQ(remark("FREQ=DAILY;BYDAY="), "has an empty part \"BYDAY=\"; it is passed over");
  EXPECT_EQ(remark("FREQ=DAILY;SKIP=FORWARD"), "has SKIP \"FORWARD\"; it is passed over");
  EXPECT_EQ(remark("RSCALE=gregorian;FREQ=DAILY;SKIP=OMIT"), "0");
  for (const char* rule : {"FREQ=DAILY;X=1", "RSCALE=GREGORIAN;FREQ=DAILY;SKIP=BACKWARD"}) {
    EXPECT_EQ(Expand(rule, "20260101", "20260101", "20260105").starts.size(), 4U) << rule;
  }
}

}  // namespace
}  // namespace velkor
