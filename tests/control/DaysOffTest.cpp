// tests/control/DaysOffTest.cpp: days off behind the bars and bars in colours of their own, on the
// screen, in words and on paper.
#include <cmath>
#include <set>

#include "platform/Accessible.h"
#include "print/PrintDocument.h"
#include "tests/control/PlannerCase.h"
#include "view/GridPainter.h"

namespace velkor {
namespace {

using testing::Contains;

class DaysOffTest : public PlannerCase {
 protected:
  RecordingSurface Screen() {
    RecordingSurface surface;
    const Rect& bounds = plan_.Elements().pic1.Bounds();
    plan_.Elements().pic1.onPaint(surface, {0, 0, bounds.Width(), bounds.Height()});
    return surface;
  }
  RecordingSurface Page() {
    RecordingSurface surface;
    PrintDocument document(plan_.Grid(), {});
    PrintOptionSet options;
    options.EndMonth = 12;
    options.VisibleText = true;
    document.LayOut(options, {16'838, 11'906}, surface);
    EXPECT_EQ(document.PageCount(), 1);
    document.DrawPage(surface, 1);
    return surface;
  }
  std::string TipOf(Date day, int band) {
    plan_.Elements().pic1.onMouseMove(DayPoint(day, band));
    return plan_.Elements().pic1.onToolTip();
  }
  std::string SpokenNameOf(Date day) {
    AccessibleTree& tree = plan_.Accessible();
    const AccessibleId table = *tree.NodeOf(plan_.Elements().pic1);
    const AccessibleId month = *tree.ChildAt(table, day.Fields().month - 1);
    return tree.FactsOf(*tree.ChildAt(month, day.Fields().day - 1))->name;
  }
};

/// By WCAG 2.2.
double Luminance(Colour colour) {
  const auto linear = [](int channel) {
    const double share = channel / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.Red()) + 0.7152 * linear(colour.Green()) +
         0.0722 * linear(colour.Blue());
}
double Contrast(Colour light, Colour dark) {
  return (Luminance(light) + 0.05) / (Luminance(dark) + 0.05);
}

TEST_F(DaysOffTest, TheirCellsAreShadedInEverySpanAndNoOthers) {
  const std::vector<DayOff> days{{At(2006, 1, 1), At(2006, 1, 1), "New Year"},
                                 {At(2006, 2, 27, 9), At(2006, 3, 5, 8), "Carnival"},
                                 {At(2005, 12, 20), At(2005, 12, 31), "Before"},
                                 {At(2006, 12, 31), At(2007, 8, 2), "Long"},
                                 {At(2006, 5, 5), At(2006, 5, 4), "Ends before it begins"},
                                 {Date(1e9), Date(2e9), "None"}};
  for (const DisplaySpan span :
       {DisplaySpan{2006, 1}, DisplaySpan{2006, 7}, DisplaySpan{2007, 1}}) {
    YearGrid grid = SampleGrid({}, {}, 300, 300);
    grid.SetDaysOff(days);
    grid.SetSpan(span);
    RecordingSurface surface;
    GridPainter(surface, grid, {}, {0, 0, 20'000, 40'000}).Draw();
    for (int row = 1; row <= MonthRows; ++row) {
      for (int column = 1; column <= GridColumns; ++column) {
        const Date date = span.DateAtCell(column, row);
        const bool inMonth = date.Fields().month == span.MonthOfRow(row);
        const bool off = inMonth && std::ranges::any_of(days, [&](const DayOff& day) {
                           return day.last.IsValid() && DaysBetween(day.first, date) >= 0 &&
                                  DaysBetween(date, day.last) >= 0;
                         });
        std::set<std::int32_t> colours;
        Point at = CentreOf(grid, row, column, 3);
        for (int step = 0; step < 6; ++step, at.x += TwipsPerPixel) {
          colours.insert(surface.ColourAt(at)->value);
        }
        EXPECT_EQ(colours.contains(grid_colours::DayOffStripe.value), off) << row << ' ' << column;
        EXPECT_EQ(colours.contains(grid_colours::DayOff.value), off && !IsWeekend(column));
        EXPECT_EQ(colours.contains(grid_colours::Weekend.value), inMonth && IsWeekend(column));
      }
    }
  }
}

TEST_F(DaysOffTest, AreReadAndToldApartInGreyToo) {
  for (const Colour back : {grid_colours::DayOff, grid_colours::Weekend}) {
    EXPECT_GE(Contrast(back, grid_colours::DayOffStripe), 1.5);
    EXPECT_GE(Contrast(back, grid_colours::DayOffNumber), 4.5);
  }
  EXPECT_GE(Contrast(grid_colours::DayOffStripe, grid_colours::DayOffNumber), 4.5);
}

TEST_F(DaysOffTest, AreNamedAfterTheAppointmentAndInTheNameOfTheDay) {
  Start();
  Refreshed({EventA});
  plan_.ShowDaysOff({{At(2005, 3, 2), At(2005, 3, 4), "Carnival"},
                     {At(2005, 3, 4), At(2005, 3, 4), "Founders'\nDay"},
                     {At(2005, 3, 4), At(2005, 3, 4), "Carnival"},
                     {At(2005, 3, 8), At(2005, 3, 8), ""}});
  EXPECT_EQ(TipOf(At(2005, 3, 4), 2), "Subject of a\n3/3/2005 to 3/4/2005\nCarnival, Founders'Day");
  EXPECT_EQ(TipOf(At(2005, 3, 4), 1), "Carnival, Founders'Day");
  EXPECT_EQ(TipOf(At(2005, 3, 8), 1), "Day off");
  EXPECT_EQ(TipOf(At(2005, 3, 9), 1), "");
  EXPECT_EQ(SpokenNameOf(At(2005, 3, 4)), "Friday 4 March 2005, Carnival, Founders'Day");
  EXPECT_EQ(SpokenNameOf(At(2005, 3, 9)), "Wednesday 9 March 2005");
}

TEST_F(DaysOffTest, OnScreenAndPaperAndGoneWithoutATrace) {
  bag_.values["DisplaySubject"] = true;
  Start();
  Refreshed({EventA});
  const std::vector<std::string> screen = Screen().Log();
  const std::vector<std::string> page = Page().Log();
  plan_.ShowDaysOff({{At(2005, 3, 4), At(2005, 3, 4), "Carnival"}});
  const Colour own = Colour::FromRgb(40, 0, 90);
  plan_.ColourBars([&](const CalEvent& event) {
    return event.EventID == "a" ? std::optional(own) : std::nullopt;
  });
  for (const RecordingSurface& drawn : {Screen(), Page()}) {
    EXPECT_THAT(drawn.Log(), Contains(testing::HasSubstr("#D6ECDC")));
    EXPECT_THAT(drawn.Log(), Contains(testing::AllOf(testing::StartsWith("text"),
                                                     testing::HasSubstr("\"4\" #000000"))));
    EXPECT_THAT(drawn.Log(), Contains(testing::HasSubstr("#28005A")));
    EXPECT_THAT(drawn.Log(), Contains(testing::HasSubstr("\"Subject of a\" #FFFFFF")));
  }
  EXPECT_EQ(Screen().ColourAt(DayPoint(At(2005, 3, 4), 2)), own);
  plan_.ColourBars([](const CalEvent&) { return std::nullopt; });
  plan_.ShowDaysOff({});
  EXPECT_EQ(Screen().Log(), screen);
  EXPECT_EQ(Page().Log(), page);
}

}  // namespace
}  // namespace velkor
