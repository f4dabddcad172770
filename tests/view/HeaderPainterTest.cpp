// tests/view/HeaderPainterTest.cpp: weekdays, months and the legend around the grid.
#include "view/HeaderPainter.h"

#include <gmock/gmock.h>

#include "platform/headless/FixedLocale.h"
#include "tests/view/SampleGrid.h"
#include "view/LegendPainter.h"

namespace velkor {
namespace {

using testing::HasSubstr;

TEST(HeaderPainter, WeekdaysStandOverTheirColumnsFromSundayAsLongAsTheyFit) {
  FixedLocale locale;
  const CalendarNames names = Locale::LoadCalendarNames(locale, 0x0409);
  // Three characters of 8 points are 240 twips wide, and two pixels stay free.
  for (const auto& [columnWidth, sunday] : {std::pair(270, "\"Sun\""), std::pair(269, "\"S\"")}) {
    const YearGrid grid = SampleGrid({}, {}, 300, columnWidth);
    RecordingSurface surface;
    DrawHeaderRow(surface, grid.Geometry(), names, Font{});
    const auto texts = surface.Calls("text");
    ASSERT_EQ(texts.size(), 37U);
    EXPECT_THAT(texts[0], HasSubstr(sunday));
  }
}

TEST(HeaderPainter, MonthsStandBesideTheirRowsInThePartThatIsInSight) {
  FixedLocale locale;
  const CalendarNames names = Locale::LoadCalendarNames(locale, 0x0409);
  const YearGrid grid = SampleGrid({}, {}, 300, 300, {2005, 7});
  RecordingSurface surface;
  // Rows are 1200 high: the end of row 6 and the beginning of row 7.
  DrawMonthColumn(surface, grid, names, Font{}, {0, 7000, 405, 7500});
  const auto texts = surface.Calls("text");
  ASSERT_EQ(texts.size(), 2U);
  EXPECT_THAT(texts[0], HasSubstr("text 0 7000 405 7200 \"Dec\""));
  EXPECT_THAT(texts[1], HasSubstr("text 0 7200 405 7500 \"Jan\""));
}

TEST(LegendPainter, ShowsTheCategoriesInSightWithTheirColoursAndCleanedNames) {
  const CategoryTable table({{"above", {}}, {"a|b\n", Colour::FromRgb(9, 8, 7)}, {"below", {}}});
  RecordingSurface surface;
  DrawLegend(surface, table, Font{}, {0, LegendRowHeight, 2000, 2 * LegendRowHeight}, 2000, 0);
  const auto texts = surface.Calls("text");
  ASSERT_EQ(texts.size(), 1U);
  EXPECT_THAT(texts[0], HasSubstr("\"ab\""));
  EXPECT_EQ(surface.ColourAt({200, 1.5 * LegendRowHeight}), Colour::FromRgb(9, 8, 7));
}

}  // namespace
}  // namespace velkor
