// tests/calendar/IcsRuleTest.cpp: rules that begin long before the window, and rules that run away.
#include "calendar/IcsRule.h"

#include <gtest/gtest.h>

#include "support/values/Date.h"

namespace velkor {
namespace {

const IcsZone floating{IcsZone::Floating{}};

WallSeconds At(int year, int month, int day, int hour = 0) {
  return Date::FromFields({year, month, day, hour, 0, 0}).Seconds();
}

RuleStarts Expand(std::string_view rule, WallSeconds from, WallSeconds to,
                  const IcsLimits& limits = {}, WallSeconds first = At(2020, 1, 1, 9)) {
  return RuleExpander(limits).Expand(rule, {false, first, &floating}, from, to);
}

TEST(IcsRule, BeginningInTheMiddleGivesWhatBeginningAtTheStartGives) {
  for (const char* rule : {"FREQ=DAILY",
                           "FREQ=DAILY;INTERVAL=7",
                           "FREQ=DAILY;BYDAY=MO,FR",
                           "FREQ=DAILY;BYMONTH=2,12",
                           "FREQ=DAILY;INTERVAL=3;BYMONTHDAY=1,-1",
                           "FREQ=WEEKLY",
                           "FREQ=WEEKLY;INTERVAL=2;BYDAY=TU,TH",
                           "FREQ=WEEKLY;INTERVAL=3;WKST=SU;BYDAY=SU,SA",
                           "FREQ=WEEKLY;BYDAY=MO;BYMONTH=5",
                           "FREQ=MONTHLY",
                           "FREQ=MONTHLY;INTERVAL=5;BYMONTHDAY=31",
                           "FREQ=MONTHLY;BYDAY=2TU,-1FR",
                           "FREQ=MONTHLY;INTERVAL=12;BYDAY=3MO",
                           "FREQ=MONTHLY;BYDAY=MO,TU,WE,TH,FR;BYSETPOS=-1",
                           "FREQ=MONTHLY;BYDAY=FR;BYMONTHDAY=13",
                           "FREQ=YEARLY",
                           "FREQ=YEARLY;INTERVAL=4",
                           "FREQ=YEARLY;INTERVAL=2;BYMONTH=3,11;BYDAY=-1SU",
                           "FREQ=YEARLY;BYYEARDAY=1,100,-1",
                           "FREQ=YEARLY;BYWEEKNO=20;BYDAY=MO",
                           "FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=29",
                           "FREQ=HOURLY;INTERVAL=7",
                           "FREQ=HOURLY;INTERVAL=5;BYDAY=SA;BYHOUR=10,11,12",
                           "FREQ=HOURLY;INTERVAL=36;BYMINUTE=0,30",
                           "FREQ=MINUTELY;INTERVAL=1000",
                           "FREQ=DAILY;BYHOUR=9,17;BYMINUTE=15",
                           "FREQ=SECONDLY;INTERVAL=10000"}) {
    const WallSeconds from = At(2026, 3, 4, 5);
    const WallSeconds to = At(2032, 3, 1);
    RuleStarts whole = Expand(rule, At(2020, 1, 1), to);
    std::erase_if(whole.starts, [&](WallSeconds wall) { return wall < from; });
    const RuleStarts part = Expand(rule, from, to);
    EXPECT_EQ(part.problem, "") << rule;
    EXPECT_EQ(whole.problem, "") << rule;
    EXPECT_FALSE(part.starts.empty()) << rule;
    EXPECT_EQ(part.starts, whole.starts) << rule;
  }
}

TEST(IcsRule, DayRulesOfShortFrequenciesAreTestedOneByOne) {
  const RuleStarts starts =
      Expand("FREQ=HOURLY;BYHOUR=9,17;BYMONTHDAY=-1;COUNT=4", At(2020, 1, 1), At(2030, 1, 1));
  EXPECT_EQ(starts.starts,
            (std::vector{At(2020, 1, 31, 9), At(2020, 1, 31, 17), At(2020, 2, 29, 9)}));
}

TEST(IcsRule, PositionsCountWithinTheMonthAndTheYear) {
  const WallSeconds from = At(2026, 1, 1);
  EXPECT_EQ(Expand("FREQ=YEARLY;BYDAY=MO;BYSETPOS=1,-1", from, At(2026, 12, 31)).starts,
            (std::vector{At(2026, 1, 5, 9), At(2026, 12, 28, 9)}));
  EXPECT_EQ(Expand("FREQ=MONTHLY;BYDAY=MO,TU,WE,TH,FR;BYSETPOS=-1", from, At(2026, 3, 1)).starts,
            (std::vector{At(2026, 1, 30, 9), At(2026, 2, 27, 9)}));
}

TEST(IcsRule, RunawayRulesAreCutShortAndReported) {
  IcsLimits limits;
  limits.ruleSteps = 20'000;
  const WallSeconds from = At(2026, 1, 1);
  const WallSeconds to = At(2026, 12, 31);
  for (const char* rule :
       {"FREQ=SECONDLY", "FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30", "FREQ=MINUTELY;BYHOUR=25,9",
        "FREQ=SECONDLY;COUNT=999999999", "FREQ=MINUTELY;BYDAY=MO;BYMONTH=1;BYYEARDAY=200",
        "FREQ=SECONDLY;BYSETPOS=2", "FREQ=DAILY;INTERVAL=99999", "FREQ=DAILY;INTERVAL=0",
        "FREQ=DAILY;COUNT=0", "FREQ=DAILY;COUNT=-1", "FREQ=DAILY;UNTIL=soon", "FREQ=NEVER", "",
        "FREQ", "RSCALE=CHINESE;FREQ=YEARLY", "FREQ=WEEKLY;BYWEEKNO=3", "BYDAY=MO"}) {
    EXPECT_NE(Expand(rule, from, to, limits).problem, "") << rule;
  }
  std::string sixty(1, '0');
  for (int i = 1; i < 60; ++i) sixty.append(",").append(std::to_string(i));
  std::string everySecond("FREQ=YEARLY;BYSECOND=");
  everySecond.append(sixty).append(";BYMINUTE=").append(sixty);
  EXPECT_EQ(Expand(everySecond, from, to, limits).problem, "has too many times a day");
}

TEST(IcsRule, ARuleThatNeverMatchesEnds) {
  for (const char* rule :
       {"FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30", "FREQ=MONTHLY;BYDAY=MO;BYSETPOS=9",
        "FREQ=DAILY;BYMONTH=2;BYMONTHDAY=30", "FREQ=YEARLY;BYYEARDAY=366;BYMONTH=1"}) {
    const RuleStarts starts = Expand(rule, At(2026, 1, 1), At(2026, 12, 31));
    EXPECT_TRUE(starts.starts.empty()) << rule;
  }
}

TEST(IcsRule, ASearchInVainIsCountedAndOneThatWouldTakeTooLongIsRefused) {
  std::string days(1, '1');
  for (int i = 2; i <= 31; ++i) days.append(",").append(std::to_string(i));
  const std::string vain = "FREQ=YEARLY;BYMONTH=1,2,3,4,5,6,7,8,9,10,11,12;BYMONTHDAY=" + days +
                           ";BYDAY=MO,TU;BYSETPOS=-300";
  EXPECT_EQ(Expand(vain, At(2026, 1, 1), At(2026, 12, 31)).problem,
            "has too many parts to search through");
  // Nothing in it is ever given, but the search through the centuries is what it costs.
  IcsLimits limits;
  limits.allRuleSteps = 1000;
  RuleExpander expander(limits);
  const IcsTime first{false, At(2020, 1, 1, 9), &floating};
  const auto problem = [&](std::string_view rule) {
    return expander.Expand(rule, first, At(2026, 1, 1), At(2026, 12, 31)).problem;
  };
  EXPECT_EQ(problem("FREQ=DAILY"), "");
  EXPECT_NE(problem("FREQ=MONTHLY;BYDAY=5MO;BYMONTHDAY=1"), "");
  EXPECT_EQ(problem("FREQ=DAILY"), "is not followed, since the rules of this file take too long");
}

TEST(IcsRule, AllRulesOfAFileShareOneBoundOfStepsAndTime) {
  IcsLimits limits;
  limits.allRuleSteps = 100;
  RuleExpander expander(limits);
  const IcsTime first{false, At(2026, 1, 1, 9), &floating};
  int followed = 0;
  while (expander.Expand("FREQ=NEVER", first, 0, 0).problem == "is no recurrence rule") ++followed;
  EXPECT_EQ(followed, 4);
  limits = {};
  limits.allRulesTime = std::chrono::milliseconds{0};
  EXPECT_EQ(Expand("FREQ=DAILY", At(2026, 1, 1), At(2026, 1, 2), limits).problem,
            "is not followed, since the rules of this file take too long");
}

}  // namespace
}  // namespace velkor
