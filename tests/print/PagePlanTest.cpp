// tests/print/PagePlanTest.cpp: the pages of a printed year, those that do not fit, and paging.
#include "print/PagePlan.h"

#include <gmock/gmock.h>

#include <limits>
#include <random>
#include <sstream>
#include <utility>

namespace velkor {
namespace {

using testing::HasSubstr;

/// "1-2 3-12" for two pages.
template <typename Runs>
std::string Text(const Runs& runs) {
  std::ostringstream text;
  const char* separator = "";
  for (const auto& run : runs) {
    text << std::exchange(separator, " ") << run.first << "-" << run.last;
  }
  return text.str();
}

/// A landscape A4 page whose band area holds 80 bands of the least height.
struct PageCase {
  PageCase() {
    options.MinBandHeight = 100;
    SetBody(8300);
  }
  void SetBody(int height) {
    options.BottomMargin = 11906 - 240 - options.TopMargin - 240 - height;
  }
  PagePlan Plan() const {
    return PlanPages(options, metrics, span, TotalBandRows(needed, 4), legend);
  }
  std::string Message() const {
    const PagePlan plan = Plan();
    return plan.failure ? plan.failure->message : "no failure";
  }

  PrintOptionSet options;
  PageMetrics metrics{{16838, 11906}, 900, 300, 240};
  DisplaySpan span{2000, 1};
  std::array<int, MonthRows> needed{};
  std::vector<Twips> legend{270};
};

TEST(PagePlan, LengthsThatAreWholeAreRoundedWithTiesToEven) {
  PageCase page;
  page.metrics.titleHeight = 240.5;
  page.metrics.dayHeaderHeight = 300.5;
  EXPECT_EQ(page.Plan().geometry.bodyHeight, 8300);
  EXPECT_EQ(page.Plan().geometry.bandAreaHeight, 8000);
}

TEST(PagePlan, BandsThatJustFitStandOnOnePageAndFewerAreStretched) {
  PageCase page;
  page.SetBody(5100);
  EXPECT_EQ(Text(page.Plan().pages), "1-12");
  EXPECT_FLOAT_EQ(page.Plan().bandHeight, 100);

  page.options.StartMonth = page.options.EndMonth = 6;
  EXPECT_EQ(Text(page.Plan().pages), "6-6");
  EXPECT_FLOAT_EQ(page.Plan().bandHeight, 1200);
  EXPECT_FLOAT_EQ(page.Plan().firstPageBody, 4800);
}

TEST(PagePlan, AMonthThatFillsAPageExactlyStandsAlone) {
  PageCase page;
  page.needed = {20, 59, 80, 79, 20, 60, 19, 61, 4, 4, 4, 4};
  EXPECT_EQ(Text(page.Plan().pages), "1-2 3-3 4-4 5-5 6-7 8-12");
  EXPECT_FLOAT_EQ(page.Plan().firstPageBody, 7900);

  // 25 bands in single precision, a little less in double.
  page.options.MinBandHeight = 136.08F;
  page.SetBody(3402 + 300);
  page.needed.fill(25);
  EXPECT_EQ(page.Plan().pages.size(), 12U);
}

TEST(PagePlan, AMonthThatIsTooTallIsNamedAfterThePagesBeforeItAreCut) {
  PageCase page;
  page.span.FirstMonth = 4;
  page.options.StartMonth = 4;
  page.options.EndMonth = 3;
  page.needed = {50, 50, 500};
  EXPECT_EQ(page.Message(),
            "Events for June will not all fit onto the page\r\r"
            "You can increase the printing area by reducing the minimum band height, the top and "
            "bottom margins or the header.");
  EXPECT_EQ(Text(page.Plan().pages), "1-1 2-2");
}

TEST(PagePlan, WhatLeavesNothingToPrintOnIsAFailure) {
  PageCase noBody;
  PrintOptionSet& margins = noBody.options;
  margins.LeftMargin = margins.TopMargin = margins.RightMargin = margins.BottomMargin =
      margins.LegendWidth = std::numeric_limits<std::int32_t>::max();
  EXPECT_THAT(noBody.Message(), HasSubstr("Category legend will not fit onto the page\r\rYou"));
  EXPECT_LT(noBody.Plan().geometry.columnWidth, 0);
  noBody.legend.clear();
  EXPECT_THAT(noBody.Message(), HasSubstr("January"));

  PageCase backwards;
  backwards.options.StartMonth = 8;
  backwards.options.EndMonth = 3;
  EXPECT_THAT(backwards.Message(), HasSubstr("August"));
}

TEST(PagePlan, TheLegendIsCutByItsHeightsOnlyWhereHardlyAnyBodyIsLeft) {
  PageCase page;
  page.options.MinBandHeight = 1;
  for (int entry = 2; entry <= 300; ++entry) page.legend.push_back(entry * 270.0);
  // The page less 510 twips, in pixels.
  page.SetBody(760);
  EXPECT_EQ(Text(page.Plan().legend), "1-300");

  page.SetBody(759);
  const PagePlan plan = page.Plan();
  ASSERT_EQ(plan.legend.size(), 150U);
  EXPECT_EQ(plan.legend.back().first, 299);
  ASSERT_EQ(plan.pages.size(), 150U);
  EXPECT_EQ(Text(std::vector{plan.pages[0], plan.pages[1], plan.pages[149]}), "1-12 1-0 1-0");
}

TEST(PagePlan, ALegendEntryOnTheBoundOpensTheNextPageUnlessItIsTheFirst) {
  PageCase page;
  page.SetBody(700);
  page.legend = {300, 700, 1400, 1700, 2099};
  EXPECT_EQ(Text(page.Plan().legend), "1-1 2-2 3-3 4-5");

  page.legend.back() = 2401;
  EXPECT_EQ(Text(page.Plan().legend), "1-1 2-2 3-3 4-4");
  EXPECT_THAT(page.Message(), HasSubstr("legend"));
}

TEST(PagePlan, EveryMonthStandsOnOnePageThatIsNeverOverfullNorHasRoomForTheNext) {
  std::mt19937 random(7);
  for (int round = 0; round < 1000; ++round) {
    PageCase page;
    page.span.FirstMonth = static_cast<int>(random() % 12) + 1;
    for (int& rows : page.needed) rows = 4 + static_cast<int>(random() % (random() % 3 ? 36 : 78));
    const int start = static_cast<int>(random() % 12) + 1;
    const int end = start + static_cast<int>(random() % (13 - start));
    page.options.StartMonth = static_cast<std::int16_t>(page.span.MonthOfRow(start));
    page.options.EndMonth = static_cast<std::int16_t>(page.span.MonthOfRow(end));
    const auto rowsOf = [&page](int first, int last) {
      int rows = 0;
      while (first <= last) rows += page.needed[first++ - 1];
      return rows;
    };
    const PagePlan plan = page.Plan();
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

TEST(PageTurner, GoesNoFurtherThanTheFirstAndTheLastPage) {
  for (const int count : {0, 1, 2}) {
    PageTurner turner;
    turner.Begin(count);
    for (int click = 0; click < 3; ++click) turner.Next();
    EXPECT_EQ(turner.Page(), std::max(count, 1));
    EXPECT_EQ(turner.BackEnabled(), count > 1);
    EXPECT_FALSE(turner.NextEnabled());
    for (int click = 0; click < 3; ++click) turner.Back();
    EXPECT_EQ(turner.Page(), 1);
    EXPECT_FALSE(turner.BackEnabled());
    EXPECT_EQ(turner.NextEnabled(), count > 1);
  }
}

TEST(PrintStatus, NamesPaperAndOrientationThatHaveAName) {
  EXPECT_EQ(PrintStatus(1, 3, 2, 9), "Page 1 of 3  Landscape A4, 210 x 297 mm");
  EXPECT_EQ(PrintStatus(2, 2, 1, 41), "Page 2 of 2  Portrait German Legal Fanfold, 8 1/2 x 13 in.");
  for (const int code : {-1, 0, 42, 257}) EXPECT_EQ(PrintStatus(1, 1, 0, code), "Page 1 of 1   ");
}

}  // namespace
}  // namespace velkor
