// tests/view/FaceTest.cpp: the whole control's face, by a recorded log and by its parts.
#include "view/Face.h"

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

#include "platform/headless/FixedLocale.h"
#include "tests/view/SampleGrid.h"
#include "view/HeaderPainter.h"
#include "view/LegendPainter.h"

namespace velkor {
namespace {

using testing::HasSubstr;

/// The year that the face of a control shows.
struct ShownYear {
  FaceLayout layout;
  YearGrid grid;
  FaceContent content;

  explicit ShownYear(Extent control, PlannerProperties options = {.DisplaySubject = true})
      : layout(DivideFace(control)),
        grid(SampleGrid({SampleEvent("days", At(2006, 1, 30), At(2006, 2, 3), "Leave"),
                         SampleEvent("same", At(2006, 1, 31), At(2006, 2, 1), "Key Customer"),
                         SampleEvent("none", At(2006, 12, 31), At(2007, 1, 2))},
                        options)) {
    grid.Resize({layout.picParent.Width(), layout.picParent.Height()}, 0, {});
    FixedLocale locale;
    content = {YearCaption(2006), Locale::LoadCalendarNames(locale, 0x0409), Font{},
               At(2006, 2, 14)};
  }
};

TEST(Face, OfATinyYearIsDrawnAsRecorded) {
  // Bands of 110 twips: too low for day numbers.
  const ShownYear year({10'000, 390 + 90 + 285 + 48 * 110});
  RecordingSurface surface;
  DrawFace(surface, year.layout, year.grid, year.content);
  std::string log;
  for (const std::string& line : surface.Log()) log += line + '\n';

  std::ifstream file(TEST_DATA "tiny-year.log", std::ios::binary);
  std::stringstream recorded;
  recorded << file.rdbuf();
  if (log != recorded.str()) std::ofstream("tiny-year.log.new", std::ios::binary) << log;
  EXPECT_EQ(log, recorded.str()) << "All lines are in tiny-year.log.new in the build folder.";
}

TEST(Face, MeasuresNothingTwiceInOnePass) {
  for (const int bandHeight : {110, 150, 300}) {
    const ShownYear year({16'000, 390.0 + 90 + 285 + 48 * bandHeight});
    MeasureOnceSurface surface;
    DrawFace(surface, year.layout, year.grid, year.content);
    EXPECT_THAT(surface.repeated, testing::IsEmpty()) << bandHeight;
    EXPECT_GT(surface.Measured(), 0);
    EXPECT_EQ(surface.Depth(), 0U);
  }
}

TEST(Face, TheHeightWithoutScrollingIsTheLeastOne) {
  const ShownYear any({10'000, 10'000});
  const Twips height = LeastControlHeight(any.grid, {});
  EXPECT_FALSE(ShownYear({10'000, height}).grid.Geometry().scroll);
  EXPECT_TRUE(ShownYear({10'000, height - 1}).grid.Geometry().scroll);
}

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
  DrawMonthColumn(surface, SceneOf(grid), names, Font{}, {0, 7000, 405, 7500});
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
