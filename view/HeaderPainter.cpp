// view/HeaderPainter.cpp: draws the weekday header above the grid and the month column beside it.
#include "view/HeaderPainter.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "values/Text.h"
#include "view/GridPainter.h"

namespace velkor {
namespace {

constexpr TextFlags CentredFlags =
    text_flags::Centre | text_flags::SingleLine | text_flags::VerticalCentre | text_flags::NoPrefix;
constexpr int DaysOfWeek = 7;

std::string_view FirstCharacter(std::string_view text) {
  std::string_view rest = text;
  if (!rest.empty()) TakeCharacter(rest);
  return text.substr(0, text.size() - rest.size());
}

using Captions = std::array<std::string_view, DaysOfWeek>;

bool Fit(Surface& surface, const Captions& captions, const Font& font, Twips width) {
  return std::all_of(captions.begin(), captions.end(), [&](std::string_view caption) {
    return surface.Measure(caption, font).width <= width;
  });
}

Captions Initials(const CalendarNames& names) {
  Captions captions;
  std::transform(names.abbreviatedDays.begin(), names.abbreviatedDays.begin() + DaysOfWeek,
                 captions.begin(), FirstCharacter);
  return captions;
}

/// The seven captions from Sunday on: the abbreviated names if all of them fit, else initials, else
/// nothing.
Captions WeekdayCaptions(Surface& surface, const CalendarNames& names, const Font& font,
                         Twips width) {
  Captions captions;
  std::copy_n(names.abbreviatedDays.begin(), DaysOfWeek, captions.begin());
  if (Fit(surface, captions, font, width)) return captions;
  captions = Initials(names);
  if (!Fit(surface, captions, font, width)) captions.fill({});
  return captions;
}

Twips CaptionWidth(const GridGeometry& geometry) {
  return geometry.ColumnWidth - 2 * Twips{geometry.pixel.width};
}

/// The height that a line of text needs to be read: down to the baseline.
Twips LeastReadableHeight(Surface& surface, const Font& font) {
  // Most fonts have their baseline at four fifths of a line.
  constexpr double DownToBaseline = 0.8;
  return DownToBaseline * surface.Measure("0", font).height;
}

}  // namespace

void DrawHeaderRow(Surface& surface, const GridGeometry& geometry, const CalendarNames& names,
                   const Font& font, Twips height) {
  surface.Fill({0, 0, static_cast<Twips>(geometry.GridWidth), height}, header_colours::Back);
  const Captions captions = WeekdayCaptions(surface, names, font, CaptionWidth(geometry));
  for (int column = 1; column <= GridColumns; ++column) {
    const Rect cell{geometry.ColumnEdge(column - 1), 0, geometry.ColumnEdge(column), height};
    if (IsWeekend(column)) surface.Fill(cell, grid_colours::Weekend);
    surface.Text(cell, captions[(column - 1) % DaysOfWeek], font, header_colours::Text,
                 CentredFlags);
  }
}

bool WeekdayInitialsFit(Surface& surface, const GridGeometry& geometry, const CalendarNames& names,
                        const Font& font) {
  return Fit(surface, Initials(names), font, CaptionWidth(geometry));
}

void DrawMonthColumn(Surface& surface, const GridScene& scene, const CalendarNames& names,
                     const Font& font, const Rect& visible, Twips width) {
  const GridGeometry& geometry = scene.geometry;
  const Twips edge = geometry.pen > 0 ? geometry.pen : double{geometry.pixel.height};
  const Twips leastHeight = geometry.pen > 0 ? LeastReadableHeight(surface, font) : 0;
  surface.Fill({0, visible.top, width, visible.bottom}, header_colours::Back);
  for (int row = 1; row <= MonthRows; ++row) {
    const Twips rowBottom = geometry.RowBottom(scene.layout, row);
    const Twips top = std::max(geometry.RowTop(scene.layout, row), visible.top);
    const Twips bottom = std::min(rowBottom, visible.bottom);
    if (bottom <= top) continue;
    if (bottom - top >= leastHeight) {
      surface.Text({0, top, width, bottom},
                   names.abbreviatedMonths[scene.rule.span.MonthOfRow(row)], font,
                   header_colours::Text, CentredFlags);
    }
    if (rowBottom > visible.bottom) continue;
    surface.Fill({0, rowBottom, width, rowBottom + edge}, header_colours::Edge);
  }
}

}  // namespace velkor
