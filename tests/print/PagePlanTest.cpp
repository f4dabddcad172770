// tests/print/PagePlanTest.cpp: random years on pages, the legend's part of each, and what is said
// of a page. The probe's cases have single years.
#include "print/PagePlan.h"

#include <gmock/gmock.h>

#include <random>
#include <sstream>
#include <utility>

namespace velkor {
namespace {

/// "1-2 3-12" for two pages.
std::string Text(const std::vector<LegendSlice>& slices) {
  std::ostringstream text;
  const char* separator = "";
  for (const LegendSlice& slice : slices) {
    text << std::exchange(separator, " ") << slice.first << "-" << slice.last;
  }
  return text.str();
}

TEST(PagePlan, EveryMonthStandsOnOnePageThatIsNeverOverfullNorHasRoomForTheNext) {
  // A landscape A4 page whose band area holds 80 bands of the least height.
  const PageMetrics metrics{{16838, 11906}, 900, 300, 240};
  PrintOptionSet options;
  options.MinBandHeight = 100;
  options.BottomMargin = 11906 - 240 - options.TopMargin - 240 - 8300;
  std::mt19937 random(7);
  for (int round = 0; round < 1000; ++round) {
    const DisplaySpan span{2000, static_cast<int>(random() % 12) + 1};
    std::array<int, MonthRows> needed{};
    for (int& rows : needed) rows = 4 + static_cast<int>(random() % (random() % 3 ? 36 : 78));
    const int start = static_cast<int>(random() % 12) + 1;
    const int end = start + static_cast<int>(random() % (13 - start));
    options.StartMonth = static_cast<std::int16_t>(span.MonthOfRow(start));
    options.EndMonth = static_cast<std::int16_t>(span.MonthOfRow(end));
    const auto rowsOf = [&needed](int first, int last) {
      int rows = 0;
      while (first <= last) rows += needed[first++ - 1];
      return rows;
    };
    const PagePlan plan = PlanPages(options, metrics, span, TotalBandRows(needed, 4), {270});
    int next = start;
    for (const PageMonths& months : plan.pages) {
      ASSERT_EQ(months.first, next);
      next = months.last + 1;
      const int most = plan.pages.size() == 1 || months.first == months.last ? 80 : 79;
      ASSERT_LE(rowsOf(months.first, months.last), most);
      ASSERT_TRUE(next > end || rowsOf(months.first, next) >= 80);
    }
    ASSERT_EQ(plan.failure.has_value(), next <= end);
    ASSERT_TRUE(!plan.failure || rowsOf(next, next) > 80);
  }
}

TEST(PagePlan, TheLegendBeginsAgainOnLaterPagesWhereItIsReprinted) {
  PagePlan plan;
  plan.legend = {{1, 5}, {6, 9}};
  std::vector<LegendSlice> once, again;
  for (int page = 1; page <= 5; ++page) {
    once.push_back(LegendOfPage(plan, page, false));
    again.push_back(LegendOfPage(plan, page, true));
  }
  EXPECT_EQ(Text(once), "1-5 6-9 1-0 1-0 1-0");
  EXPECT_EQ(Text(again), "1-5 6-9 1-5 6-9 1-5");
}

TEST(PrintStatus, NamesPaperAndOrientationThatHaveAName) {
  EXPECT_EQ(PrintStatus(1, 3, 2, 9), "Page 1 of 3  Landscape A4, 210 x 297 mm");
  EXPECT_EQ(PrintStatus(2, 2, 1, 41), "Page 2 of 2  Portrait German Legal Fanfold, 8 1/2 x 13 in.");
  for (const int code : {-1, 0, 42, 257}) EXPECT_EQ(PrintStatus(1, 1, 0, code), "Page 1 of 1   ");
}

}  // namespace
}  // namespace velkor
