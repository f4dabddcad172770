// print/PagePlan.cpp: which months and which part of the legend go on which page, and how large.
#include "print/PagePlan.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "print/PaperNames.h"
#include "view/LegendPainter.h"

namespace velkor {
namespace {

/// Left free beside the grid and the legend.
constexpr Twips SideGap = 450;
/// Left free below the body.
constexpr Twips FootGap = 240;
constexpr Twips LegendTextGap = 90;
constexpr Twips LegendTestGap = 510;
/// A legend that is too long for a page has lower rows, down to these of 5 points.
constexpr Twips LeastLegendRow = 120;

constexpr std::array<std::string_view, 13> MonthNames{
    "",     "January", "February",  "March",   "April",    "May",     "June",
    "July", "August",  "September", "October", "November", "December"};

constexpr std::string_view Advice =
    "\r\rYou can increase the printing area by reducing the minimum band height, the top and "
    "bottom margins or the header.";

PageGeometry GeometryOf(const PrintOptionSet& options, const PageMetrics& metrics) {
  PageGeometry geometry;
  geometry.gridWidth = metrics.page.width - SideGap - options.LeftMargin -
                       static_cast<Twips>(options.LegendWidth) - options.RightMargin;
  geometry.columnWidth = (geometry.gridWidth - metrics.monthLabelWidth) / GridColumns;
  geometry.legendTextWidth = options.LegendWidth - LegendTextGap;
  geometry.bodyHeight = WholeTwips(metrics.page.height - options.BottomMargin - FootGap -
                                   options.TopMargin - metrics.titleHeight);
  geometry.bandAreaHeight = WholeTwips(geometry.bodyHeight - metrics.dayHeaderHeight);
  return geometry;
}

/// Cuts the items from `first` to `last` into runs that stay below a limit; one that reaches it
/// exactly has a run to itself.
/// @param totalOf  running total of an item's size, asked for the one before `first` too
/// @return the item that is larger than the limit, where there is one; those before it are cut
template <typename Run, typename TotalOf>
std::optional<int> CutGreedily(int first, int last, double limit, TotalOf&& totalOf,
                               std::vector<Run>& runs) {
  while (first <= last) {
    const double bound = totalOf(first - 1) + limit;
    if (totalOf(first) > bound) return first;
    int end = first;
    while (end < last && totalOf(end + 1) < bound) ++end;
    runs.push_back({first, end});
    first = end + 1;
  }
  return std::nullopt;
}

std::optional<PageFailure> CutLegend(const std::vector<Twips>& heights, Twips pageHeight,
                                     PagePlan& plan) {
  const int count = static_cast<int>(heights.size());
  // What is compared with the body's twips are the page's pixels: only where hardly any body is
  // left do the entries' heights count.
  if (RoundHalfEven((pageHeight - LegendTestGap) / TwipsPerPixel) <= plan.geometry.bodyHeight) {
    plan.legend.push_back({1, count});
    return std::nullopt;
  }
  const auto totalOf = [&heights](int entry) { return entry < 1 ? 0 : heights[entry - 1]; };
  if (!CutGreedily(1, count, plan.geometry.bodyHeight, totalOf, plan.legend)) return std::nullopt;
  return PageFailure{"Category legend will not fit onto the page" + std::string(Advice)};
}

PageFailure MonthFailure(int month) {
  return {"Events for " + std::string(MonthNames[month]) + " will not all fit onto the page" +
          std::string(Advice)};
}

std::optional<PageFailure> CutMonths(const PrintOptionSet& options, const DisplaySpan& span,
                                     const BandRows& rows, PagePlan& plan) {
  const int start = span.RowOfMonth(options.StartMonth);
  const int end = span.RowOfMonth(options.EndMonth);
  const auto totalOf = [&rows](int position) { return position < 1 ? 0 : rows[position]; };
  const int total = totalOf(end) - totalOf(start - 1);
  const double area = plan.geometry.bandAreaHeight;
  if (total <= 0 || area <= 0) return MonthFailure(span.MonthOfRow(start));

  const auto candidate = static_cast<float>(area / total);
  if (options.MinBandHeight <= candidate) {
    plan.bandHeight = candidate;
    plan.pages.push_back({start, end});
  } else {
    plan.bandHeight = options.MinBandHeight;
    // In single precision, as the height is: 25 bands of 136.08 twips fill 3402 twips.
    const float rowsPerPage = std::trunc(static_cast<float>(area / double{plan.bandHeight}));
    const std::optional<int> tooLarge =
        CutGreedily(start, end, double{rowsPerPage}, totalOf, plan.pages);
    if (tooLarge) return MonthFailure(span.MonthOfRow(*tooLarge));
  }
  const PageMonths& page = plan.pages.front();
  plan.firstPageBody =
      static_cast<float>(totalOf(page.last) - totalOf(page.first - 1)) * plan.bandHeight;
  return std::nullopt;
}

}  // namespace

BandRows TotalBandRows(const std::array<int, MonthRows>& needed, int leastBands) {
  BandRows rows{};
  for (int position = 1; position <= MonthRows; ++position) {
    rows[position] = rows[position - 1] + std::max(needed[position - 1], leastBands);
  }
  return rows;
}

PagePlan PlanPages(const PrintOptionSet& options, const PageMetrics& metrics,
                   const DisplaySpan& span, const BandRows& rows,
                   const std::vector<Twips>& legendHeights) {
  PagePlan plan;
  plan.geometry = GeometryOf(options, metrics);
  plan.failure = CutLegend(legendHeights, metrics.page.height, plan);
  if (!plan.failure) plan.failure = CutMonths(options, span, rows, plan);
  if (!plan.failure) plan.pages.resize(std::max(plan.pages.size(), plan.legend.size()));
  return plan;
}

std::string PageTitle(int viewYear, const std::string& header) {
  std::string title = "Year " + std::to_string(viewYear) + "\r";
  if (!header.empty()) title += header + "\r";
  return title;
}

LegendSlice LegendOfPage(const PagePlan& plan, int page, bool reprintLegend) {
  const int slices = static_cast<int>(plan.legend.size());
  const bool hasSlice = page >= 1 && slices > 0 && (page <= slices || reprintLegend);
  return hasSlice ? plan.legend[(page - 1) % slices] : LegendSlice();
}

LegendRows RowsOfLegend(const PageGeometry& geometry, const LegendSlice& slice) {
  const int count = slice.last - slice.first + 1;
  if (count <= 0 || geometry.legendTextWidth <= 0) return {};
  const Twips room = geometry.bodyHeight;
  LegendRows rows;
  rows.height = std::clamp<Twips>(room / count, LeastLegendRow, LegendRowHeight);
  const int fitting = std::max(0, static_cast<int>(room / rows.height + 1e-6));
  if (count <= fitting) {
    rows.shown = count;
  } else if (fitting > 0) {
    rows.shown = fitting - 1;
    rows.more = count - rows.shown;
  }
  return rows;
}

void PageTurner::Begin(int count, int page) {
  page_ = std::clamp(page, 1, std::max(1, count));
  count_ = count;
  backEnabled_ = page_ > 1;
  nextEnabled_ = page_ < count;
}

void PageTurner::Back() {
  if (!backEnabled_) return;
  --page_;
  nextEnabled_ = true;
  backEnabled_ = page_ > 1;
}

void PageTurner::Next() {
  if (!nextEnabled_) return;
  ++page_;
  backEnabled_ = true;
  nextEnabled_ = page_ < count_;
}

std::string PrintStatus(int page, int count, int orientation, int paperSize) {
  return "Page " + std::to_string(page) + " of " + std::to_string(count) + "  " +
         std::string(OrientationName(orientation)) + " " + std::string(PaperName(paperSize));
}

}  // namespace velkor
