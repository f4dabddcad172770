// tests/view/GridPainterTest.cpp: colours in the cells, subjects on the bars, only what is in
// sight.
#include "view/GridPainter.h"

#include <gmock/gmock.h>

#include "tests/view/SampleGrid.h"

namespace velkor {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr Rect Everything{0, 0, 20'000, 40'000};
constexpr Colour Leave = Colour::FromRgb(10, 120, 40);

/// Text that is so many times as tall.
class TallSurface : public RecordingSurface {
 public:
  explicit TallSurface(double factor) : factor_(factor) {}
  Extent Measure(std::string_view text, const Font& font) override {
    return {0, RecordingSurface::Measure(text, font).height * factor_};
  }

 private:
  double factor_;
};

/// Draws all passes.
void Draw(Surface& surface, const YearGrid& grid, const Rect& visible = Everything,
          Date today = At(1990, 1, 1)) {
  GridPainter painter(surface, grid, Font{}, visible);
  painter.DrawShading();
  painter.DrawMonthOutlines();
  painter.DrawEvents();
  painter.DrawToday(today);
}

/// Lines that mention a colour or a text.
std::vector<std::string> With(const std::vector<std::string>& lines, const std::string& part) {
  std::vector<std::string> found;
  std::copy_if(lines.begin(), lines.end(), std::back_inserter(found),
               [&](const std::string& line) { return line.find(part) != std::string::npos; });
  return found;
}

TEST(GridPainter, ShadesWeekendsAndTheCellsOutsideEachMonth) {
  for (const DisplaySpan span :
       {DisplaySpan{2006, 1}, DisplaySpan{2009, 1}, DisplaySpan{2007, 7}}) {
    const YearGrid grid = SampleGrid({}, {}, 300, 300, span);
    RecordingSurface surface;
    Draw(surface, grid);
    for (int row = 1; row <= MonthRows; ++row) {
      const int month = span.MonthOfRow(row);
      for (int column = 1; column <= GridColumns; ++column) {
        const Date date = span.DateAtCell(column, row);
        const bool weekend = date.Weekday() == 1 || date.Weekday() == 7;
        const Colour expected = date.Fields().month != month ? Colour::FromRgb(224, 224, 224)
                                : weekend                    ? Colour::FromRgb(238, 232, 170)
                                                             : colours::White;
        for (int band = 1; band <= 4; ++band) {
          ASSERT_EQ(surface.ColourAt(CentreOf(grid, row, column, band)), expected)
              << span.ViewYear << " row " << row << " column " << column;
        }
      }
    }
  }
}

TEST(GridPainter, WithoutSubjectsNoTextIsDrawnOrMeasured) {
  const YearGrid grid = SampleGrid({SampleEvent("a", At(2006, 1, 30), At(2006, 2, 3))});
  RecordingSurface surface;
  Draw(surface, grid);
  EXPECT_THAT(surface.Calls("text"), IsEmpty());
  EXPECT_EQ(surface.Measured(), 0);
}

// A line of the surface is 24 twips high for each point, times the factor.
TEST(GridPainter, SubjectsTakeTheLargestSizeOfTwoPointsOrMoreWhoseLineFitsABand) {
  const struct {
    int bandHeight;
    double factor;
    int size;
  } cases[] = {{300, 1, 7}, {168, 1, 7}, {167, 1, 6}, {143, 1, 5}, {119, 1, 4},
               {100, 1, 4}, {150, 2, 3}, {150, 3, 2}, {150, 50, 2}};
  for (const auto& [bandHeight, factor, size] : cases) {
    const YearGrid grid = SampleGrid({SampleEvent("a", At(2006, 1, 30), At(2006, 2, 3))},
                                     {.DisplaySubject = true}, bandHeight);
    TallSurface surface(factor);
    GridPainter(surface, grid, Font{}, Everything).DrawEvents();
    EXPECT_THAT(surface.Calls("text"), SizeIs(2));
    for (const std::string& text : surface.Calls("text")) {
      EXPECT_THAT(text, HasSubstr("font " + std::to_string(size) + " flags 0x40800"));
    }
  }
}

TEST(GridPainter, SubjectsAreBlackOrWhiteByTheGreaterContrast) {
  // On the first of each pair both have a contrast of 4.6 to 1, and black a little more.
  const std::pair<Colour, Colour> cases[] = {{Colour::FromRgb(118, 118, 118), colours::Black},
                                             {Colour::FromRgb(117, 117, 117), colours::White},
                                             {Colour::FromRgb(237, 0, 0), colours::Black},
                                             {Colour::FromRgb(236, 0, 0), colours::White},
                                             {Colour::FromRgb(0, 138, 0), colours::Black},
                                             {Colour::FromRgb(0, 137, 0), colours::White},
                                             {Colour::FromRgb(189, 0, 255), colours::Black},
                                             {Colour::FromRgb(188, 0, 255), colours::White}};
  for (const auto& [back, text] : cases) EXPECT_EQ(ReadableOn(back), text) << back.value;
}

TEST(GridPainter, SubjectsStandOnTheirBarsWithoutControlCharacters) {
  CalEvent event = SampleEvent("a", At(2006, 1, 30), At(2006, 1, 31));
  event.Subject = "R&D|\tweekly\r\n";
  const YearGrid grid = SampleGrid({event}, {.DisplaySubject = true});
  RecordingSurface surface;
  Draw(surface, grid);
  EXPECT_THAT(surface.Calls("text"),
              testing::ElementsAre("text 8715 315 8985 585 \"R&Dweekly\" #000000 font 7 flags "
                                   "0x40800"));
  EXPECT_EQ(grid.Events()[0].Subject, event.Subject);
}

TEST(GridPainter, PaintsOnlyTheRowsAndBarsThatAreInSight) {
  std::vector<CalEvent> events;
  for (int month = 1; month <= 12; ++month) {
    for (const char* id : {"a", "b", "c"}) {
      events.push_back(SampleEvent(id, At(2006, month, 9), At(2006, month, 10), "Leave"));
    }
  }
  const YearGrid grid = SampleGrid(events, {.DisplaySubject = true});
  RecordingSurface surface;
  // The second and third band of March.
  Draw(surface, grid, {0, 2700, 11'145, 3300}, At(2006, 8, 1));
  EXPECT_THAT(With(surface.Log(), "#0A7828"), SizeIs(2));
  EXPECT_THAT(surface.Calls("text"), SizeIs(2));
  EXPECT_THAT(With(surface.Calls("fill"), "#E0E0E0"), SizeIs(2));
  EXPECT_THAT(surface.Calls("outline"), SizeIs(1));
  EXPECT_EQ(surface.ColourAt(CentreOf(grid, 3, 12, 2)), Leave);
  EXPECT_EQ(surface.ColourAt(CentreOf(grid, 3, 12, 3)), Leave);
}

TEST(GridPainter, AStripOfAnyHeightShowsWhatTheWholeGridShowsThere) {
  const YearGrid grid = SampleGrid({SampleEvent("a", At(2006, 3, 1), At(2006, 5, 1), "Leave")});
  const Date today = At(2006, 3, 10);
  RecordingSurface whole;
  Draw(whole, grid, Everything, today);
  for (int top = 2340; top <= 3660; top += 15) {
    const Rect strip{0, double(top), 11'145, top + 15.0};
    RecordingSurface surface;
    {
      const ViewScope view(surface, strip, {0, 0});
      Draw(surface, grid, strip, today);
    }
    for (int x = 3487; x < 4000; x += 15) {
      const Point point{double(x), top + 7.0};
      ASSERT_EQ(surface.ColourAt(point), whole.ColourAt(point)) << x << ", " << top;
    }
  }
}

}  // namespace
}  // namespace velkor
