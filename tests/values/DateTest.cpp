// tests/values/DateTest.cpp: day counts against calendar fields.
#include "values/Date.h"

#include <gtest/gtest.h>

namespace velkor {
namespace {

TEST(Date, FieldsSurviveTheWayThroughTheDayCount) {
  for (int year = 100; year <= 9999; year += 13) {
    for (int month = 1; month <= 12; ++month) {
      const DateFields fields{year, month, 1 + year % 28, year % 24, month * 4, year % 60};
      EXPECT_EQ(Date::FromFields(fields).Fields(), fields);
    }
  }
}

TEST(Date, DaysCountFromThe30thOfDecember1899) {
  EXPECT_EQ(Date::FromYmd(1899, 12, 30).Days(), 0);
  EXPECT_EQ(Date::FromYmd(1900, 1, 1).Days(), 2);
  EXPECT_EQ(Date::FromYmd(2005, 1, 1).Days(), 38353);
  EXPECT_EQ(Date::FromYmd(100, 1, 1).Days(), -657434);
}

TEST(Date, FractionOfANegativeDateCountsForward) {
  EXPECT_EQ(Date(-1.25).Fields(), (DateFields{1899, 12, 29, 6, 0, 0}));
  EXPECT_EQ(Date::FromFields({1899, 12, 29, 6, 0, 0}).Days(), -1.25);
  EXPECT_LT(Date(-1.25), Date(-1.75));
  EXPECT_EQ(Date(-0.5).Fields(), (DateFields{1899, 12, 30, 12, 0, 0}));
}

TEST(Date, RoundsToTheNearestSecondAlsoAcrossMidnight) {
  const double second = 1.0 / 86400;
  EXPECT_EQ(Date(36525 + 0.4 * second).Fields(), (DateFields{1999, 12, 31, 0, 0, 0}));
  EXPECT_EQ(Date(36526 - 0.4 * second).Fields(), (DateFields{2000, 1, 1, 0, 0, 0}));
  EXPECT_EQ(Date(-1 - (1 - 0.4 * second)).Fields(), (DateFields{1899, 12, 30, 0, 0, 0}));
}

TEST(Date, WeekdayCountsFromSunday) {
  EXPECT_EQ(Date::FromYmd(2026, 11, 22).Weekday(), 1);
  EXPECT_EQ(Date::FromYmd(1899, 12, 30).Weekday(), 7);
  EXPECT_EQ(Date::FromYmd(1899, 12, 29).Weekday(), 6);
  EXPECT_EQ(Date::FromYmd(1800, 1, 1).Weekday(), 4);
}

}  // namespace
}  // namespace velkor
