// tests/print/PagePainterTest.cpp: what stands on the pages of a printed year, and where.
#include "print/PagePainter.h"

#include <gmock/gmock.h>

#include <cstdio>

#include "tests/view/SampleGrid.h"
#include "view/GridPainter.h"
#include "view/LegendPainter.h"

namespace velkor {
namespace {

using testing::Contains;
using testing::Each;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr Extent A4{11906, 16838};
constexpr Colour LeaveColour = Colour::FromRgb(10, 120, 40);

/// The year 2006 laid out for paper.
class Pages {
 public:
  Pages(std::vector<CalEvent> events, PrintOptionSet options, Extent page = A4,
        const CategoryTable& categories = SampleCategories(), DisplaySpan span = {2006, 1})
      : options_(std::move(options)), grid_(span, categories, CategoryFilter(), {}) {
    const EventFields fields = grid_.Fields();
    for (CalEvent& event : events) fields.Derive(event);
    events_ = EventCollection(std::move(events));
    layout_ = LayOutBands(events_, grid_.Rule(), grid_.Filter(), options_.MinBands);
    names_.abbreviatedMonths = {"",    "Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    names_.abbreviatedDays = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
    title_ = PageTitle(span.ViewYear, options_.Header);
    RecordingSurface measuring;
    metrics_ = MetricsOf(page, options_, title_, names_, measuring);
    plan = PlanPages(options_, metrics_, span, layout_.BandsInRow, LegendHeights(categories));
  }

  RecordingSurface Draw(int page, PixelSize pixel = {}) const {
    RecordingSurface surface(pixel);
    const PrintedYear year{grid_.Rule(), grid_.Categories(), events_, layout_, names_, title_};
    PagePainter(year, options_, metrics_, plan).Draw(surface, page);
    return surface;
  }
  /// The middle of a band of a day, on a page that begins with the month `firstRow`.
  Point Middle(int row, int day, int band, int firstRow) const {
    const double column = grid_.Columns().RowDayOffset[row] + day - 0.5;
    const double bands = layout_.BandsInRow[row - 1] - layout_.BandsInRow[firstRow - 1];
    return {options_.LeftMargin + metrics_.monthLabelWidth + column * plan.geometry.columnWidth,
            BodyTop() + metrics_.dayHeaderHeight +
                (bands + band - 0.5) * static_cast<double>(plan.bandHeight)};
  }
  Twips BodyTop() const { return options_.TopMargin + metrics_.titleHeight; }
  Twips TitleHeight() const { return metrics_.titleHeight; }
  int Bands(int row) const { return layout_.BandsOf(row); }

  PagePlan plan;

 private:
  PrintOptionSet options_;
  YearGrid grid_;
  EventCollection events_;
  BandLayout layout_;
  CalendarNames names_;
  std::string title_;
  PageMetrics metrics_;
};

/// An event over two days of each month but February, and one from year to year.
std::vector<CalEvent> BusyYear() {
  std::vector<CalEvent> events{SampleEvent("long", At(2005, 12, 1), At(2007, 2, 1), "Other")};
  for (int month = 1; month <= 12; ++month) {
    if (month == 2) continue;
    events.push_back(
        SampleEvent("m" + std::to_string(month), At(2006, month, 9), At(2006, month, 11), "Leave"));
  }
  return events;
}

CategoryTable LongLegend(int count) {
  std::vector<Category> categories;
  for (int i = 1; i <= count; ++i) {
    categories.push_back({"C" + std::to_string(i), Colour::FromRgb(i % 256, i / 256, 7)});
  }
  return CategoryTable(std::move(categories));
}

/// The texts that are drawn, in their quotes.
std::vector<std::string> Texts(const RecordingSurface& surface) {
  std::vector<std::string> texts;
  for (const std::string& call : surface.Calls("text")) {
    const std::size_t begin = call.find('"');
    texts.push_back(call.substr(begin, call.find("\" #") + 1 - begin));
  }
  return texts;
}

TEST(PagePainter, DrawsNothingBeyondTheMargins) {
  PrintOptionSet options;
  options.VisibleText = true;
  options.Header = "A header that is long enough to be broken into two lines or even three";
  // Years that begin and end in the first and last columns; paper in both orientations.
  for (const DisplaySpan span : {DisplaySpan{2006, 1}, DisplaySpan{2005, 10}}) {
    for (const Extent page : {A4, Extent{16838, 11906}, Extent{12240, 15840}, Extent{3000, 2500}}) {
      for (const std::int32_t margin : {0, 1134, 2000}) {
        options.LeftMargin = options.TopMargin = options.RightMargin = margin;
        options.BottomMargin = margin / 2;
        const Pages pages(BusyYear(), options, page, LongLegend(300), span);
        for (int number = 1; number <= static_cast<int>(pages.plan.pages.size()); ++number) {
          const RecordingSurface surface = pages.Draw(number);
          const Rect printed{1.0 * margin, 1.0 * margin, page.width - margin,
                             page.height - margin / 2};
          const auto blank = [&](double x, double y) {
            const bool inside = x > printed.left - 8 && x < printed.right + 8 &&
                                y > printed.top - 8 && y < printed.bottom + 8;
            return inside || !surface.ColourAt({x, y});
          };
          for (double at = -300; at < page.height; at += 90) {
            ASSERT_TRUE(blank(printed.left - 9, at) && blank(printed.right + 9, at)) << at;
            ASSERT_TRUE(blank(at, printed.top - 9) && blank(at, printed.bottom + 9)) << at;
          }
          EXPECT_EQ(surface.Depth(), 0U);
          char bounds[80];
          std::snprintf(bounds, sizeof bounds, "view %.0f %.0f %.0f %.0f ", printed.left,
                        printed.top, printed.right, printed.bottom);
          EXPECT_THAT(surface.Log().front(), testing::StartsWith(bounds));
        }
      }
    }
  }
}

TEST(PagePainter, ShowsEveryBarOfThePagesMonthsAndNoOther) {
  PrintOptionSet options;
  options.StartMonth = 3;
  options.EndMonth = 11;
  options.MinBandHeight = 800;
  const Pages pages(BusyYear(), options);
  ASSERT_THAT(pages.plan.pages, SizeIs(testing::Gt(2U)));
  int months = 0;
  for (int number = 1; number <= static_cast<int>(pages.plan.pages.size()); ++number) {
    const RecordingSurface surface = pages.Draw(number);
    const PageMonths& range = pages.plan.pages[number - 1];
    for (int row = range.first; row <= range.last; ++row, ++months) {
      EXPECT_EQ(surface.ColourAt(pages.Middle(row, 9, 3, range.first)), LeaveColour) << row;
      EXPECT_EQ(surface.ColourAt(pages.Middle(row, 10, 3, range.first)), LeaveColour) << row;
      EXPECT_NE(surface.ColourAt(pages.Middle(row, 11, 3, range.first)), LeaveColour) << row;
      EXPECT_EQ(surface.ColourAt(pages.Middle(row, 11, 2, range.first)), Colour{13421772}) << row;
    }
    const auto bars = static_cast<std::size_t>(range.last - range.first + 1);
    // With the legend's swatch.
    std::vector<std::string> leave;
    for (const std::string& fill : surface.Calls("fill")) {
      if (fill.ends_with("#0A7828")) leave.push_back(fill);
    }
    EXPECT_THAT(leave, SizeIs(bars + 1));
    EXPECT_THAT(Texts(surface), Not(Contains("\"Feb\"")));
    EXPECT_THAT(Texts(surface), Not(Contains("\"Dec\"")));
  }
  EXPECT_EQ(months, 9);
}

TEST(PagePainter, TitleAndNumberStandOnEveryPageAndTheLegendAsOftenAsWanted) {
  PrintOptionSet options;
  options.MinBandHeight = 800;
  options.Header = "Team";
  for (const bool reprint : {true, false}) {
    options.ReprintLegend = reprint;
    const Pages pages(BusyYear(), options);
    const std::size_t count = pages.plan.pages.size();
    ASSERT_GT(count, 1U);
    for (std::size_t number = 1; number <= count; ++number) {
      const auto texts = Texts(pages.Draw(static_cast<int>(number)));
      EXPECT_EQ(texts.front(), "\"Year 2006\\x0DTeam\\x0D\"");
      EXPECT_EQ(texts.back(),
                "\"Page " + std::to_string(number) + " of " + std::to_string(count) + "\"");
      EXPECT_EQ(testing::Value(texts, Contains("\"Key Customer\"")), reprint || number == 1);
    }
    EXPECT_THAT(pages.Draw(0).Log(), IsEmpty());
    EXPECT_THAT(pages.Draw(static_cast<int>(count) + 1).Log(), IsEmpty());
  }
}

TEST(PagePainter, APageWithoutMonthsCarriesTitleLegendAndNumberOnly) {
  Pages pages({}, {});
  pages.plan.legend = {{1, 2}, {3, 4}};
  pages.plan.pages.resize(2);
  const RecordingSurface surface = pages.Draw(2);
  EXPECT_THAT(Texts(surface), testing::ElementsAre("\"Year 2006\\x0D\"", "\"leave\"", "\"Other\"",
                                                   "\"Page 2 of 2\""));
  EXPECT_EQ(surface.ColourAt(pages.Middle(1, 8, 2, 1)), std::nullopt);
}

TEST(PagePainter, ALongLegendHasLowerRowsAndThenTellsHowManyAreMissing) {
  for (const auto& [count, shown] : {std::pair(40, 40), std::pair(100, 100), std::pair(300, 0)}) {
    const Pages pages({}, {}, A4, LongLegend(count));
    const auto texts = Texts(pages.Draw(1));
    EXPECT_THAT(texts, Contains("\"C1\""));
    if (shown == 0) {
      const int listed = static_cast<int>(
          std::count_if(texts.begin(), texts.end(), [](const auto& t) { return t[1] == 'C'; }));
      EXPECT_GT(listed, 100);
      EXPECT_THAT(texts, Contains("\"" + std::to_string(count - listed) + " more\""));
      continue;
    }
    EXPECT_THAT(texts, Contains("\"C" + std::to_string(shown) + "\""));
  }
}

TEST(PagePainter, SubjectsStandInTheirBarsAsTheFormatSays) {
  PrintOptionSet options;
  const std::vector<CalEvent> events{SampleEvent("a", At(2006, 3, 9), At(2006, 3, 13), "Leave")};
  EXPECT_THAT(Texts(Pages(events, options).Draw(1)), Not(Contains("\"Subject of a\"")));
  options.VisibleText = true;
  for (const auto& [format, flags] : {std::pair(print_formats::Multiline, "flags 0x2810"),
                                      std::pair(print_formats::SingleLine, "flags 0x40800")}) {
    options.PrintFormat = format;
    const RecordingSurface surface = Pages(events, options).Draw(1);
    EXPECT_THAT(surface.Calls("text"),
                Contains(testing::AllOf(HasSubstr("\"Subject of a\" #FFFFFF font \"Arial\" 6 "),
                                        HasSubstr(flags))));
  }
}

TEST(PagePainter, TheTitleBlockGrowsWithItsLinesAndMovesTheMonthsDown) {
  PrintOptionSet options;
  const Pages plain({}, options);
  options.Header = std::string(100, 'x');
  const Pages wrapped({}, options);
  // 9638 twips hold 74 characters of 13 points: a line for the year, two for the header.
  const Twips line = 13 * 20 * 1.2;
  EXPECT_EQ(wrapped.TitleHeight() - plain.TitleHeight(), 2 * line);
  const auto calls = wrapped.Draw(1).Calls("text");
  EXPECT_THAT(calls.front(), testing::StartsWith("text 1134 1134 10772 "));
  EXPECT_THAT(calls.front(), testing::EndsWith("flags 0x2811"));
  for (const Pages* pages : {&plain, &wrapped}) {
    EXPECT_EQ(pages->Draw(1).ColourAt({1200, pages->BodyTop() + 30}),
              Colour::FromRgb(244, 244, 240));
  }
}

TEST(PagePainter, WeekdaysHaveTheirInitialsInNarrowColumnsToo) {
  PrintOptionSet options;
  for (const std::int32_t legendWidth : {1000, 2268, 4000}) {
    options.LegendWidth = legendWidth;
    EXPECT_THAT(Texts(Pages({}, options).Draw(1)), Contains("\"W\"")) << legendWidth;
  }
}

TEST(PagePainter, BarsInNarrowColumnsLeaveTheirMonthsOutlineWhole) {
  const std::vector<CalEvent> events{SampleEvent("a", At(2006, 3, 1), At(2006, 4, 1), "Leave")};
  PrintOptionSet options;
  options.LegendWidth = 7300;
  const Pages pages(events, options);
  const Twips half = pages.plan.geometry.columnWidth / 2;
  ASSERT_LT(half, 25);
  const RecordingSurface surface = pages.Draw(1, {1, 1});
  const Point first = pages.Middle(3, 1, 2, 1);
  const Point last = pages.Middle(3, 31, 2, 1);
  EXPECT_EQ(surface.ColourAt(first), LeaveColour);
  for (const Twips reach : {-6, 0, 6}) {
    EXPECT_EQ(surface.ColourAt({first.x - half + reach, first.y}), grid_colours::MonthOutline);
    EXPECT_EQ(surface.ColourAt({last.x + half + reach, last.y}), grid_colours::MonthOutline);
  }
}

TEST(PagePainter, AMonthOf500BandsFailsOrHasEveryBarOnALargeSheet) {
  std::vector<CalEvent> events;
  for (int i = 0; i < 500; ++i) {
    events.push_back(SampleEvent(std::to_string(i), At(2006, 6, 14), At(2006, 6, 15), "Leave"));
  }
  PrintOptionSet options;
  EXPECT_THAT(Pages(events, options).plan.failure->message,
              testing::StartsWith("Events for June will not all fit onto the page"));
  options.MinBandHeight = 10;
  options.StartMonth = options.EndMonth = 6;
  for (const Extent sheet : {Extent{16838, 11906}, Extent{48960, 93600}}) {
    const Pages pages(events, options, sheet);
    ASSERT_EQ(pages.plan.failure, std::nullopt);
    ASSERT_THAT(pages.plan.pages, SizeIs(1));
    const RecordingSurface surface = pages.Draw(1, {5, 5});
    for (int band = 2; band <= 501; ++band) {
      ASSERT_EQ(surface.ColourAt(pages.Middle(6, 14, band, 6)), LeaveColour) << band;
      Point edge = pages.Middle(6, 14, band, 6);
      edge.y += static_cast<double>(pages.plan.bandHeight) / 2;
      const auto isBar = [&](Twips off) {
        return surface.ColourAt({edge.x, edge.y + off}) == LeaveColour;
      };
      ASSERT_FALSE(isBar(-4) && isBar(0) && isBar(4)) << band;
    }
  }
}

TEST(PagePainter, MonthNamesHaveRoomInTheLowestRowOrAreLeftOut) {
  PrintOptionSet options;
  options.MinBands = 1;
  options.MinBandHeight = 0;
  for (const std::int32_t height : {700, 1300, 2000, 8000}) {
    const RecordingSurface surface = Pages({}, options, {A4.width, height + 3200.0}).Draw(1);
    EXPECT_EQ(testing::Value(Texts(surface), Contains("\"Apr\"")), height > 700) << height;
    for (const std::string& call : surface.Calls("text")) {
      if (call.find("\"Apr\"") == std::string::npos) continue;
      double top = 0, bottom = 0, size = 0;
      std::sscanf(call.c_str(), "text %*f %lf %*f %lf", &top, &bottom);
      std::sscanf(call.c_str() + call.find("Arial"), "Arial\" %lf", &size);
      EXPECT_LE(size * 20 * 1.2, bottom - top) << height;
      EXPECT_EQ(size == 8, height == 8000) << height;
    }
  }
}

TEST(PagePainter, PagesWithoutRoomForDaysOrLegendDrawNeither) {
  PrintOptionSet options;
  options.LegendWidth = 9000;
  EXPECT_THAT(Texts(Pages(BusyYear(), options).Draw(1)),
              testing::AllOf(Not(Contains("\"Jan\"")), Contains("\"leave\"")));
  options.LegendWidth = 80;
  EXPECT_THAT(Texts(Pages(BusyYear(), options).Draw(1)),
              testing::AllOf(Contains("\"Jan\""), Not(Contains("\"leave\""))));
  options.LeftMargin = options.RightMargin = 8000;
  for (const std::string& fill : Pages(BusyYear(), options).Draw(1).Calls("fill"))
    ADD_FAILURE() << fill;
}

TEST(PagePainter, APageIsTheSameCallsWhateverThePixels) {
  PrintOptionSet options;
  options.VisibleText = true;
  const Pages pages(BusyYear(), options);
  EXPECT_EQ(pages.Draw(1, {2.4F, 4.8F}).Log(), pages.Draw(1).Log());
  // A pen would be a pixel, which is no length.
  EXPECT_THAT(pages.Draw(1).Calls("outline"), IsEmpty());
}

}  // namespace
}  // namespace velkor
