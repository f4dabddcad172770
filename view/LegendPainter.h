// view/LegendPainter.h: draws the legend: a colour swatch and a name for each category.
#pragma once

#include "model/CategoryTable.h"
#include "platform/Surface.h"

namespace velkor {

inline constexpr Twips LegendRowHeight = 270;

/// Height of all rows.
Twips LegendHeight(const CategoryTable& categories);

/// Draws the rows that lie in `visible`, both in the coordinates of `picCats`: row 1 begins at the
/// top left corner, each row is as wide as `visible`.
void DrawLegend(Surface& surface, const CategoryTable& categories, const Font& font,
                const Rect& visible);

}  // namespace velkor
