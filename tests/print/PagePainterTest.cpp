// tests/print/PagePainterTest.cpp: what stands on the pages of a printed year, and where.
#include "print/PagePainter.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <fstream>
#include <functional>
#include <sstream>

#include "tests/view/SampleGrid.h"
#include "view/GridPainter.h"
#include "view/LegendPainter.h"

namespace velkor {
namespace {

using testing::Contains;
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
    const PrintedYear year{grid_.Rule(),    grid_.Categories(),     events_, layout_,
                           grid_.OffDays(), grid_.ColourOfEvents(), names_,  title_};
    PagePainter(year, options_, metrics_, plan).Draw(surface, page);
    return surface;
  }
  /// The middle of a band of a day, on a page that begins with the month `firstRow`.
  Point Middle(int row, int day, int band, int firstRow) const {
    const double column = grid_.Columns().RowDayOffset[row] + day - 0.5;
    const double bands = layout_.BandsInRow[row - 1] - layout_.BandsInRow[firstRow - 1];
    return {options_.LeftMargin + metrics_.monthLabelWidth + column * plan.geometry.columnWidth,
            options_.TopMargin + metrics_.titleHeight + metrics_.dayHeaderHeight +
                (bands + band - 0.5) * static_cast<double>(plan.bandHeight)};
  }

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

void SetLowRows(PrintOptionSet& options) {
  options.MinBands = 1;
  options.MinBandHeight = 0;
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

/// With their places, colours, fonts and flags; the numbers of days once.
TEST(PagePainter, PagesCarryTheRecordedTextsWhateverThePixels) {
  const struct {
    const char* name;
    std::function<void(PrintOptionSet&)> set;
    Extent page = A4;
    int legend = 0;
  } cases[] = {
      {"the defaults", [](PrintOptionSet&) {}},
      {"a header, subjects in several lines, the legend once",
       [](PrintOptionSet& options) {
         options.Header = std::string(100, 'x');
         options.MinBandHeight = 800;
         options.VisibleText = true;
         options.PrintFormat = print_formats::Multiline;
         options.ReprintLegend = false;
       }},
      {"subjects in one line, the legend on every page",
       [](PrintOptionSet& options) {
         options.MinBandHeight = 1500;
         options.VisibleText = options.ReprintLegend = true;
         options.PrintFormat = print_formats::SingleLine;
       }},
      {"narrow columns", [](PrintOptionSet& options) { options.LegendWidth = 4000; }},
      {"no room for the days", [](PrintOptionSet& options) { options.LegendWidth = 9000; }},
      {"no room for the legend", [](PrintOptionSet& options) { options.LegendWidth = 80; }},
      {"no room at all",
       [](PrintOptionSet& options) { options.LeftMargin = options.RightMargin = 8000; }},
      {"a long legend in lower rows", [](PrintOptionSet&) {}, A4, 100},
      {"a longer one that is cut", [](PrintOptionSet&) {}, A4, 300},
      {"rows without room for a month's name", SetLowRows, {A4.width, 3900}},
      {"low rows with smaller names", SetLowRows, {A4.width, 4500}},
      {"a legend on pages without months",
       [](PrintOptionSet& options) {
         SetLowRows(options);
         options.BottomMargin = A4.height - 2600;
       },
       A4, 6},
  };
  std::string log;
  for (const auto& one : cases) {
    PrintOptionSet options;
    one.set(options);
    const Pages pages(BusyYear(), options, one.page,
                      one.legend == 0 ? SampleCategories() : LongLegend(one.legend));
    for (int page = 0; page <= static_cast<int>(pages.plan.pages.size()) + 1; ++page) {
      const RecordingSurface surface = pages.Draw(page);
      EXPECT_EQ(pages.Draw(page, {2.4F, 4.8F}).Log(), surface.Log()) << one.name;
      // A pen would be a pixel, which is no length.
      EXPECT_THAT(surface.Calls("outline"), IsEmpty()) << one.name;
      log += std::string(one.name) + ", page " + std::to_string(page) + "\n";
      for (const std::string& text : surface.Calls("text")) {
        const bool isDayNumber =
            text.find_first_of("0123456789", text.find('"')) == text.find('"') + 1;
        if (!isDayNumber || &one == cases) log += text + "\n";
      }
    }
  }
  std::ifstream file(TEST_DATA "page-texts.log", std::ios::binary);
  std::stringstream recorded;
  recorded << file.rdbuf();
  if (log != recorded.str()) std::ofstream("page-texts.log.new", std::ios::binary) << log;
  EXPECT_EQ(log, recorded.str()) << "All lines are in page-texts.log.new in the build folder.";
}

}  // namespace
}  // namespace velkor
