// view/HeaderPainter.h: draws the weekday header above the grid and the month column beside it.
#pragma once

#include "platform/Surface.h"
#include "span/Locale.h"
#include "view/GridScene.h"

namespace velkor {

namespace header_colours {
inline constexpr Colour Back = Colour::FromRgb(244, 244, 240);
inline constexpr Colour Text = Colour::FromRgb(40, 40, 40);
inline constexpr Colour Edge = Colour::FromRgb(200, 200, 196);
}  // namespace header_colours

/// Draws `picHeadCol`: the weekday above each column, as long a name as fits. Positions count from
/// the header's top left corner, which stands above the grid's.
void DrawHeaderRow(Surface& surface, const GridGeometry& geometry, const CalendarNames& names,
                   const Font& font, Twips height = HeaderRowHeight);

/// True when a column has room for the first character of every weekday.
bool WeekdayInitialsFit(Surface& surface, const GridGeometry& geometry, const CalendarNames& names,
                        const Font& font);

/// Draws `picHeadRow`: the month beside each row. Positions are the grid's own from top to bottom;
/// a row that is only partly in sight has its name in the part that is. On paper, whose rows may be
/// very low, a name that could not be read is left out.
void DrawMonthColumn(Surface& surface, const GridScene& scene, const CalendarNames& names,
                     const Font& font, const Rect& visible, Twips width = MonthColumnWidth);

}  // namespace velkor
