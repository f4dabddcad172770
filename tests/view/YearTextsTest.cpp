// tests/view/YearTextsTest.cpp: years are named by what they span and say why they look empty.
#include "view/YearTexts.h"

#include <gtest/gtest.h>

#include "tests/view/SampleGrid.h"

namespace velkor {
namespace {

TEST(YearTexts, AYearThatGoesOverIntoTheNextNamesBoth) {
  EXPECT_EQ(YearName({2026, 1}), "Year 2026");
  EXPECT_EQ(YearName({2026, 12}), "Year 2026/27");
  EXPECT_EQ(YearName({1999, 2}), "Year 1999/00");
  EXPECT_EQ(YearName({999, 2}), "Year 999/00");
}

TEST(YearTexts, AYearOfWhichNothingIsSeenSaysWhy) {
  const CalEvent day = SampleEvent("day", At(2006, 3, 1), At(2006, 3, 2));
  const CalEvent hour = SampleEvent("hour", At(2006, 3, 1, 12), At(2006, 3, 1, 13));
  const CalEvent trip = SampleEvent("trip", At(2006, 3, 1, 12), At(2006, 3, 1, 13), "Trip");
  CategoryFilter filter;
  filter.SetCategoryFilter("Trip");
  EXPECT_EQ(WhyEmpty(SampleGrid({day})), "");
  EXPECT_EQ(WhyEmpty(SampleGrid({})), "Year 2006 has no appointments.");
  EXPECT_EQ(WhyEmpty(SampleGrid({hour})), "The settings hide the only appointment of Year 2006.");
  EXPECT_EQ(WhyEmpty(SampleGrid({day, hour}, {}, 300, 300, {2006, 1}, filter)),
            "The filter hides all 2 appointments of Year 2006.");
  EXPECT_EQ(WhyEmpty(SampleGrid({day, trip}, {}, 300, 300, {2006, 1}, filter)),
            "The filter and the settings hide all 2 appointments of Year 2006.");
}

}  // namespace
}  // namespace velkor
