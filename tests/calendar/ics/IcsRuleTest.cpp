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
  std::ifstream file(TEST_DATA "rules-begun-before.txt");
  int rules = 0;
  for (std::string rule; std::getline(file, rule); ++rules) {
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
  EXPECT_EQ(rules, 26);
}

/// As the standard says; weekdays are the start's, and all-day occurrences begin at midnight.
TEST(IcsRule, WhatOtherProgramsReadOtherwiseIsAsTheStandardSays) {
  std::ifstream file(TEST_DATA "rules-by-the-standard.txt");
  int rules = 0;
  for (std::string first, to; file >> first >> to; ++rules) {
    std::string rule, starts, found;
    std::getline(file.ignore(), rule, '|');
    std::getline(file, starts);
    const Expansion expanded = Expand(rule, first, first, to);
    for (const WallSeconds wall : expanded.starts) {
      found += (found.empty() ? "" : ", ") + Words(Date::FromSeconds(wall));
    }
    EXPECT_EQ(found, starts) << rule;
    EXPECT_THAT(expanded.remarks, ElementsAre()) << rule;
  }
  EXPECT_EQ(rules, 13);
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

}  // namespace
}  // namespace velkor
