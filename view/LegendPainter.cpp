// view/LegendPainter.cpp: draws the legend: a colour swatch and a name for each category.
#include "view/LegendPainter.h"

#include <algorithm>

#include "view/span/Globals.h"

namespace velkor {
namespace {

constexpr Colour Back = colours::White;
constexpr Colour SwatchEdge = Colour::FromRgb(96, 96, 96);
constexpr Twips Margin = 60;
constexpr Twips SwatchWidth = 300;
constexpr TextFlags NameFlags = text_flags::Left | text_flags::SingleLine |
                                text_flags::VerticalCentre | text_flags::NoPrefix |
                                text_flags::WordEllipsis;

}  // namespace

Twips LegendHeight(const CategoryTable& categories) {
  return categories.Count() * LegendRowHeight;
}

void DrawLegend(Surface& surface, const CategoryTable& categories, const Font& font,
                const Rect& visible) {
  surface.Fill(visible, Back);
  const int firstRow = std::max(0, static_cast<int>(visible.top / LegendRowHeight));
  for (int row = firstRow; row < categories.Count(); ++row) {
    const Twips top = row * LegendRowHeight;
    if (top >= visible.bottom) break;
    const Category& category = categories.At(row + 1);
    const Rect swatch{Margin, top + Margin / 2, Margin + SwatchWidth,
                      top + LegendRowHeight - Margin / 2};
    surface.Fill(swatch, category.colour);
    surface.Outline(swatch, SwatchEdge, 1);
    surface.Text({swatch.right + 2 * Margin, top, visible.right - Margin, top + LegendRowHeight},
                 Globals::StripControlChars(category.name), font, colours::Black, NameFlags);
  }
}

}  // namespace velkor
