// print/PagePainter.cpp: draws the pages of a printed year: title, months, legend, page number.
#include "print/PagePainter.h"

#include <algorithm>
#include <cmath>

#include "view/GridPainter.h"
#include "view/HeaderPainter.h"
#include "view/LegendPainter.h"

namespace velkor {
namespace {

constexpr const char* PageFace = "Arial";
constexpr double TitlePoints = 13;
constexpr double LabelPoints = 8;
constexpr double PageNumberPoints = 7;
constexpr Twips PageNumberHeight = 170;
constexpr double SubjectPoints = 6;

/// Room below the title's last line, also for a surface whose lines are a little higher than those
/// that were measured.
constexpr Twips TitleGap = 90;
constexpr Twips LabelMargin = 60;
/// What a bar leaves free at each side, in very low rows and narrow columns a smaller share of
/// them. Two of them keep bars apart on a preview's pixels too.
constexpr float BarGap = 8;
constexpr float BarGapShare = 0.15F;
/// Width of lines: one pixel of a preview.
constexpr Twips LinePen = TwipsPerPixel;

constexpr Twips LineTwipsPerPoint = 24;

constexpr TextFlags WrappedFlags =
    text_flags::WordBreak | text_flags::NoPrefix | text_flags::EditControl;
constexpr TextFlags LineFlags = text_flags::WordEllipsis | text_flags::NoPrefix;
constexpr TextFlags TitleFlags = WrappedFlags | text_flags::Centre;
constexpr TextFlags NumberFlags =
    text_flags::Centre | text_flags::SingleLine | text_flags::VerticalCentre | text_flags::NoPrefix;
constexpr TextFlags MoreFlags =
    text_flags::Left | text_flags::SingleLine | text_flags::VerticalCentre | text_flags::NoPrefix;

Font PageFontOf(double size, bool bold = false) {
  Font font;
  font.face = PageFace;
  font.size = size;
  font.bold = bold;
  return font;
}

Font TitleFont() {
  return PageFontOf(TitlePoints, true);
}

/// The largest in which each weekday has its initial; the smallest where none has room.
Font HeaderFont(Surface& surface, const GridGeometry& geometry, const CalendarNames& names) {
  Font font;
  for (const double size : {LabelPoints, 7.0, 6.0, 5.0, 4.0}) {
    font = PageFontOf(size);
    if (WeekdayInitialsFit(surface, geometry, names, font)) break;
  }
  return font;
}

/// The largest that the lowest of a page's months has room for; the smallest where none fits.
Font MonthFont(Surface& surface, const PrintedYear& year, const PageMonths& months,
               float bandHeight) {
  int bands = year.layout.BandsOf(months.first);
  for (int row = months.first + 1; row <= months.last; ++row) {
    bands = std::min(bands, year.layout.BandsOf(row));
  }
  Font font;
  for (const double size : {LabelPoints, 7.0, 6.0, 5.0, 4.0}) {
    font = PageFontOf(size);
    if (surface.Measure("0", font).height <= bands * double{bandHeight}) break;
  }
  return font;
}

Twips PrintedWidth(Extent page, const PrintOptionSet& options) {
  return page.width - options.LeftMargin - options.RightMargin;
}

SubjectStyle SubjectsBy(const PrintOptionSet& options) {
  const bool multiline = options.PrintFormat == print_formats::Multiline;
  return {options.VisibleText, multiline ? WrappedFlags : LineFlags, SubjectPoints};
}

}  // namespace

PageMetrics MetricsOf(Extent page, const PrintOptionSet& options, const std::string& title,
                      const CalendarNames& names, Surface& measuring) {
  const Font label = PageFontOf(LabelPoints);
  PageMetrics metrics;
  metrics.page = page;
  metrics.monthLabelWidth = MonthColumnWidth;
  for (const std::string& month : names.abbreviatedMonths) {
    const Twips width = measuring.Measure(month, label).width + 2 * LabelMargin;
    metrics.monthLabelWidth = std::max(metrics.monthLabelWidth, width);
  }
  metrics.dayHeaderHeight = std::max(HeaderRowHeight, measuring.Measure("0", label).height);
  metrics.titleHeight =
      measuring.MeasureLines(title, TitleFont(), PrintedWidth(page, options), TitleFlags).height +
      TitleGap;
  return metrics;
}

std::vector<Twips> LegendHeights(const CategoryTable& categories) {
  std::vector<Twips> heights;
  heights.reserve(categories.All().size());
  for (int index = 1; index <= categories.Count(); ++index) {
    heights.push_back(index * LegendRowHeight);
  }
  return heights;
}

PagePainter::PagePainter(const PrintedYear& year, const PrintOptionSet& options,
                         const PageMetrics& metrics, const PagePlan& plan)
    : year_(year), options_(options), metrics_(metrics), plan_(plan) {
  const Twips left = options.LeftMargin;
  const Twips top = options.TopMargin;
  printed_ = {left, top, left + PrintedWidth(metrics.page, options),
              metrics.page.height - options.BottomMargin};
  const Twips bodyTop = top + metrics.titleHeight;
  body_ = {left, bodyTop, printed_.right, bodyTop + plan.geometry.bodyHeight};
}

void PagePainter::Draw(Surface& surface, int page) const {
  if (page < 1 || page > PageCount()) return;
  const ViewScope margins(surface, printed_, {0, 0});
  DrawTitle(surface);
  const PageMonths& months = plan_.pages[static_cast<std::size_t>(page - 1)];
  if (months.first <= months.last) DrawMonths(surface, months);
  DrawLegendPart(surface, LegendOfPage(plan_, page, options_.ReprintLegend));
  DrawPageNumber(surface, page);
}

void PagePainter::DrawTitle(Surface& surface) const {
  surface.Text({printed_.left, printed_.top, printed_.right, body_.top}, year_.title, TitleFont(),
               colours::Black, TitleFlags);
}

GridGeometry PagePainter::GeometryOfMonths() const {
  GridGeometry geometry;
  geometry.ColumnWidth = static_cast<float>(plan_.geometry.columnWidth);
  geometry.BandHeight = plan_.bandHeight;
  geometry.GridWidth = WholeTwips(std::trunc(geometry.ColumnEdge(GridColumns)));
  geometry.pixel = {std::min(BarGap, BarGapShare * geometry.ColumnWidth),
                    std::min(BarGap, BarGapShare * geometry.BandHeight)};
  geometry.pen = LinePen;
  return geometry;
}

void PagePainter::DrawMonths(Surface& surface, const PageMonths& months) const {
  const GridGeometry geometry = GeometryOfMonths();
  if (geometry.ColumnWidth <= 0) return;
  const GridScene scene{year_.rule, year_.categories, year_.events,      year_.layout,
                        geometry,   year_.daysOff,    year_.eventColour, SubjectsBy(options_)};

  // The months' rows as they stand in the whole year, moved up to the body's top.
  const Twips top = geometry.RowTop(year_.layout, months.first);
  const Twips bottom = geometry.RowBottom(year_.layout, months.last);
  const Twips labelWidth = metrics_.monthLabelWidth;
  const Rect header{body_.left + labelWidth, body_.top,
                    body_.left + labelWidth + geometry.ColumnEdge(GridColumns),
                    body_.top + metrics_.dayHeaderHeight};
  const Rect grid{header.left, header.bottom, header.right, header.bottom + bottom - top};

  surface.Fill({body_.left, header.top, header.left, header.bottom}, header_colours::Back);
  {
    const ViewScope view(surface, header, {header.left, header.top});
    DrawHeaderRow(surface, geometry, year_.names, HeaderFont(surface, geometry, year_.names),
                  header.Height());
  }
  {
    const ViewScope view(surface, {body_.left, grid.top, grid.left, grid.bottom},
                         {body_.left, grid.top - top});
    const Font label = MonthFont(surface, year_, months, plan_.bandHeight);
    DrawMonthColumn(surface, scene, year_.names, label, {0, top, labelWidth, bottom}, labelWidth);
  }
  // The pen of the outermost lines reaches beyond the grid, on a preview by a whole pixel.
  constexpr Twips Reach = LinePen + LinePen / 2;
  const ViewScope view(
      surface, {grid.left - Reach, grid.top - Reach, grid.right + Reach, grid.bottom + Reach},
      {grid.left, grid.top - top});
  GridPainter painter(surface, scene, PageFontOf(LabelPoints), {0, top, grid.Width(), bottom});
  painter.Draw();
}

void PagePainter::DrawLegendPart(Surface& surface, const LegendSlice& slice) const {
  const LegendRows rows = RowsOfLegend(plan_.geometry, slice);
  if (rows.shown == 0 && rows.more == 0) return;
  const Twips left = body_.right - options_.LegendWidth;
  const Twips width = plan_.geometry.legendTextWidth;
  const Rect column{left, body_.top, left + width, body_.bottom};
  const ViewScope view(surface, column, {column.left, column.top});

  const Font font = PageFontOf(std::min(LabelPoints, std::floor(rows.height / LineTwipsPerPoint)));
  const auto rowRect = [&](int row) {
    return Rect{0, row * rows.height, width, (row + 1) * rows.height};
  };
  for (int row = 0; row < rows.shown; ++row) {
    DrawLegendRow(surface, year_.categories.At(slice.first + row), font, rowRect(row), false,
                  LinePen);
  }
  if (rows.more > 0) {
    surface.Text(LegendNameRect(rowRect(rows.shown)), std::to_string(rows.more) + " more", font,
                 colours::Black, MoreFlags);
  }
}

void PagePainter::DrawPageNumber(Surface& surface, int page) const {
  surface.Text({printed_.left, printed_.bottom - PageNumberHeight, printed_.right, printed_.bottom},
               "Page " + std::to_string(page) + " of " + std::to_string(PageCount()),
               PageFontOf(PageNumberPoints), colours::Black, NumberFlags);
}

}  // namespace velkor
