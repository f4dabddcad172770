// view/LegendPainter.h: the rows of the legend, a colour swatch and a name for each category.
#pragma once

#include <string>

#include "model/CategoryTable.h"
#include "platform/Surface.h"

namespace velkor {

inline constexpr Twips LegendRowHeight = 270;

namespace legend_colours {
inline constexpr Colour Back = colours::White;
/// Of the selected row; its name and the edge of its swatch are white.
inline constexpr Colour Selected = Colour::FromRgb(0, 84, 166);
}  // namespace legend_colours

/// The name as it is shown: without "|" and control characters.
std::string LegendText(const Category& category);

/// Height of all rows.
Twips LegendHeight(const CategoryTable& categories);

/// Row `index`, counted from 1, where row 1 begins at the origin.
Rect LegendRowRect(int index, Twips width);

/// The row at a height below the top of row 1; 0 above it and below the last one.
int LegendRowAt(Twips y, const CategoryTable& categories);

/// Where the name stands within a row.
Rect LegendNameRect(const Rect& row);

/// Draws one row into its rectangle; what stands behind it shows through unless it is selected. A
/// name that is too long ends in an ellipsis.
/// @param pen  of the swatch, as DrawFrame takes it
void DrawLegendRow(Surface& surface, const Category& category, const Font& font, const Rect& row,
                   bool selected, Twips pen = 0);

/// Draws the part `visible` of the legend, of its rows only those that lie in it.
/// @param visible   counted from the top left corner of row 1
/// @param selected  index of the row that is drawn as selected; 0 for none
void DrawLegend(Surface& surface, const CategoryTable& categories, const Font& font,
                const Rect& visible, Twips rowWidth, int selected = 0);

}  // namespace velkor
