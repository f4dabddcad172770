// tests/support/DatePatternTest.cpp: formats of many countries, and times of day.
#include "support/DatePattern.h"

#include <gtest/gtest.h>

namespace velkor {
namespace {

const Date Day = Date::FromFields({2005, 4, 8, 0, 5, 9});

TEST(DatePattern, KeepsOrderAndSeparatorsOfTheFormat) {
  struct Case {
    const char* format;
    const char* text;
    DateOrder order;
  };
  using enum DateOrder;
  for (const Case& each :
       {Case{"M/d/yy", "4/8/2005", MonthDayYear}, Case{"dd.MM.yyyy", "08.04.2005", DayMonthYear},
        Case{"yyyy-MM-dd", "2005-04-08", YearMonthDay},
        Case{"yy. M. d.", "2005. 4. 8", YearMonthDay},
        Case{"d.MM.yy 'd. y'.", "8.4.2005", DayMonthYear},
        Case{"d MMM yyyy", "8 4 2005", DayMonthYear},
        Case{"\u200Fd/\u200FM/yyyy", "8/4/2005", DayMonthYear}, Case{"", "2005-4-8", YearMonthDay},
        Case{"MM/yyyy", "2005-4-8", YearMonthDay}}) {
    const DatePattern pattern(each.format);
    EXPECT_EQ(pattern.ShortDate(Day), each.text) << each.format;
    EXPECT_EQ(pattern.FieldOrder(), each.order) << each.format;
  }
  EXPECT_EQ(DatePattern("d.M.y").ShortDate(Date::FromYmd(100, 1, 2)), "2.1.0100");
}

TEST(DatePattern, TimeFollowsUnlessItIsMidnight) {
  EXPECT_EQ(DatePattern("M/d/y", true).DateToText(Day), "4/8/2005 12:05:09 AM");
  EXPECT_EQ(DatePattern("M/d/y").DateToText(Day), "4/8/2005 00:05:09");
  EXPECT_EQ(DatePattern("M/d/y", true).DateToText(Date(Day.Days() + 0.5)), "4/8/2005 12:05:09 PM");
  EXPECT_EQ(DatePattern("M/d/y", true).DateToText(Day.Midnight()), "4/8/2005");
}

}  // namespace
}  // namespace velkor
