// view/GridPainter.cpp: draws the grid: weekends, days off, months, bars with their subjects,
// today.
#include "view/GridPainter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string>

#include "span/Globals.h"
#include "view/Frame.h"
#include "view/SelectionPainter.h"

namespace velkor {
namespace {

constexpr TextFlags DayNumberFlags =
    text_flags::Right | text_flags::SingleLine | text_flags::VerticalCentre | text_flags::NoPrefix;

/// Of day numbers and subjects.
constexpr int LargestPoints = 7;

/// The light of each value of a channel (WCAG 2.2, relative luminance).
std::array<double, 256> LinearLight() {
  std::array<double, 256> linear;
  for (std::size_t value = 0; value < linear.size(); ++value) {
    const double share = static_cast<double>(value) / 255;
    linear[value] = share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
  }
  return linear;
}

}  // namespace

Colour ReadableOn(Colour back) {
  static const std::array<double, 256> linear = LinearLight();
  const double luminance =
      0.2126 * linear[back.Red()] + 0.7152 * linear[back.Green()] + 0.0722 * linear[back.Blue()];
  constexpr double Flare = 0.05;
  const double toBlack = (luminance + Flare) / Flare;
  const double toWhite = (1 + Flare) / (luminance + Flare);
  return toBlack >= toWhite ? colours::Black : colours::White;
}

Twips ReadableBandHeight(Surface& surface, const Font& font) {
  Font largest = font;
  largest.size = LargestPoints;
  return std::ceil(surface.Measure("0", largest).height);
}

GridPainter::GridPainter(Surface& surface, const GridScene& scene, const Font& font,
                         const Rect& visible)
    : surface_(surface),
      scene_(scene),
      geometry_(scene.geometry),
      layout_(scene.layout),
      font_(font),
      visible_(visible) {}

void GridPainter::Draw(const GridMarks& marks) {
  const bool onPaper = geometry_.pen > 0;
  DrawShading();
  DrawDaysOff();
  if (!onPaper) DrawMonthOutlines();
  if (marks.selection) DrawSelectionFill(surface_, scene_, *marks.selection, visible_);
  DrawDayNumbers();
  DrawEvents();
  // Bars reach up to them there: where pixels are coarse, one would cover the other.
  if (onPaper) DrawMonthOutlines();
  if (marks.today) DrawToday(*marks.today);
  if (marks.selection) DrawSelectionFrame(surface_, scene_, *marks.selection, visible_);
  if (marks.cursor) DrawDayCursor(surface_, scene_, *marks.cursor, visible_);
}

void GridPainter::DrawShading() {
  surface_.Fill(visible_, grid_colours::Back);
  for (int column = 1; column <= GridColumns; ++column) {
    if (!IsWeekend(column)) continue;
    const int before = column - 1;
    if (column < GridColumns && IsWeekend(column + 1)) ++column;
    surface_.Fill(
        {geometry_.ColumnEdge(before), visible_.top, geometry_.ColumnEdge(column), visible_.bottom},
        grid_colours::Weekend);
  }
  const MonthColumns& columns = scene_.rule.columns;
  for (int row = 1; row <= MonthRows; ++row) {
    const Twips top = geometry_.RowTop(layout_, row);
    const Twips bottom = geometry_.RowBottom(layout_, row);
    if (!InSight(top, bottom)) continue;
    const Twips monthStart = geometry_.ColumnEdge(columns.RowDayOffset[row]);
    const Twips monthEnd = geometry_.ColumnEdge(columns.RowLastColumn[row]);
    if (monthStart > 0) surface_.Fill({0, top, monthStart, bottom}, grid_colours::OutOfMonth);
    const Twips gridEnd = geometry_.GridWidth;
    if (monthEnd < gridEnd) {
      surface_.Fill({monthEnd, top, gridEnd, bottom}, grid_colours::OutOfMonth);
    }
  }
}

void GridPainter::DrawDaysOff() {
  for (int row = 1; row <= MonthRows; ++row) {
    const Twips top = geometry_.RowTop(layout_, row);
    const Twips bottom = geometry_.RowBottom(layout_, row);
    if (!InSight(top, bottom)) continue;
    scene_.daysOff.ForEachStretch(row, [&](int first, int last) {
      for (int column = first; column <= last; ++column) {
        if (IsWeekend(column)) continue;
        surface_.Fill({geometry_.ColumnEdge(column - 1), top, geometry_.ColumnEdge(column), bottom},
                      grid_colours::DayOff);
      }
      DrawStripes({geometry_.ColumnEdge(first - 1), top, geometry_.ColumnEdge(last), bottom});
    });
  }
}

/// Upright ones, a sixth of the rectangle, in the same places in every row.
void GridPainter::DrawStripes(const Rect& rect) {
  const Twips pixel = geometry_.pixel.width;
  const Twips width =
      geometry_.pen > 0 ? geometry_.pen : std::max(1.0, std::round(TwipsPerPixel / pixel)) * pixel;
  const Twips apart = 6 * width;
  for (Twips left = std::ceil(rect.left / apart) * apart; left < rect.right; left += apart) {
    surface_.Fill({left, rect.top, std::min(left + width, rect.right), rect.bottom},
                  grid_colours::DayOffStripe);
  }
}

void GridPainter::DrawMonthOutlines() {
  const MonthColumns& columns = scene_.rule.columns;
  for (int row = 1; row <= MonthRows; ++row) {
    const Twips top = geometry_.RowTop(layout_, row);
    const Twips bottom = geometry_.RowBottom(layout_, row);
    // The outline's pen reaches a pixel beyond the row; a page has whole rows.
    const Twips reach = geometry_.pen > 0 ? 0 : double{geometry_.pixel.height};
    if (!InSight(top, bottom + reach)) continue;
    DrawFrame(surface_,
              {geometry_.ColumnEdge(columns.RowDayOffset[row]), top,
               geometry_.ColumnEdge(columns.RowLastColumn[row]), bottom},
              grid_colours::MonthOutline, geometry_.pen);
  }
}

std::optional<Font> GridPainter::FontForDayNumbers() const {
  constexpr std::array<int, 3> Sizes{LargestPoints, 6, 5};
  Font font = font_;
  for (const int size : Sizes) {
    font.size = size;
    const Extent widest = surface_.Measure("30", font);
    const bool fits = widest.height <= geometry_.BandHeight &&
                      widest.width + DayNumberMargin() <= geometry_.ColumnWidth;
    if (fits) return font;
  }
  return std::nullopt;
}

void GridPainter::DrawDayNumbers() {
  const std::optional<Font> font = FontForDayNumbers();
  if (!font) return;
  const MonthColumns& columns = scene_.rule.columns;
  for (int row = 1; row <= MonthRows; ++row) {
    const Twips top = geometry_.RowTop(layout_, row);
    const Twips bottom = top + geometry_.BandHeight;
    if (!InSight(top, bottom)) continue;
    for (int column = columns.RowDayOffset[row] + 1; column <= columns.RowLastColumn[row];
         ++column) {
      surface_.Text(
          {geometry_.ColumnEdge(column - 1), top, geometry_.ColumnEdge(column) - DayNumberMargin(),
           bottom},
          std::to_string(column - columns.RowDayOffset[row]), *font,
          scene_.daysOff.Has(row, column) ? grid_colours::DayOffNumber : grid_colours::DayNumber,
          DayNumberFlags);
    }
  }
}

Font GridPainter::FontForSubjects() const {
  constexpr std::array<int, 6> Sizes{LargestPoints, 6, 5, 4, 3, 2};
  Font font = font_;
  if (scene_.subjects.size) {
    font.size = *scene_.subjects.size;
    return font;
  }
  for (const int size : Sizes) {
    font.size = size;
    if (surface_.Measure("0", font).height <= geometry_.BandHeight) break;
  }
  return font;
}

void GridPainter::DrawEvents() {
  const SubjectStyle& subjects = scene_.subjects;
  const Font font = subjects.shown ? FontForSubjects() : font_;
  for (const Bar& bar : layout_.bars) {
    const Rect rect = BarRect(bar, geometry_, layout_);
    if (!InSight(rect.top, rect.bottom)) continue;
    const CalEvent& event = scene_.events[bar.event];
    const Colour colour = scene_.ColourOf(event);
    surface_.Fill(rect, colour);
    if (subjects.shown) {
      surface_.Text(rect, Globals::StripControlChars(event.Subject), font, ReadableOn(colour),
                    subjects.flags);
    }
  }
}

void GridPainter::DrawToday(Date today) {
  const std::optional<GridCell> cell = scene_.rule.columns.CellOf(today);
  if (!cell) return;
  const TodayMark mark = TodayMarkOf(cell->row, cell->column, geometry_, layout_);
  // The pens reach a pixel beyond the frame and the shadow.
  const Twips pen = geometry_.pixel.height;
  if (!InSight(mark.frame.top - pen, mark.shadow.bottom + pen)) return;
  surface_.Outline(mark.shadow, grid_colours::TodayShadow, 1);
  surface_.Outline(mark.frame, grid_colours::TodayFrame, 2);
}

}  // namespace velkor
