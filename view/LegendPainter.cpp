// view/LegendPainter.cpp: the rows of the legend, a colour swatch and a name for each category.
#include "view/LegendPainter.h"

#include <algorithm>

#include "span/Globals.h"
#include "view/Frame.h"

namespace velkor {
namespace {

constexpr Colour SwatchEdge = Colour::FromRgb(96, 96, 96);
constexpr Twips Margin = 60;
constexpr Twips SwatchWidth = 300;
constexpr TextFlags NameFlags = text_flags::Left | text_flags::SingleLine |
                                text_flags::VerticalCentre | text_flags::NoPrefix |
                                text_flags::WordEllipsis;

}  // namespace

std::string LegendText(const Category& category) {
  return Globals::StripControlChars(category.name);
}

Twips LegendHeight(const CategoryTable& categories) {
  return categories.Count() * LegendRowHeight;
}

Rect LegendRowRect(int index, Twips width) {
  return {0, (index - 1) * LegendRowHeight, width, index * LegendRowHeight};
}

int LegendRowAt(Twips y, const CategoryTable& categories) {
  if (y < 0 || y >= LegendHeight(categories)) return 0;
  return static_cast<int>(y / LegendRowHeight) + 1;
}

Rect LegendNameRect(const Rect& row) {
  const Twips left = row.left + SwatchWidth + 3 * Margin;
  return {left, row.top, std::max(left, row.right - Margin), row.bottom};
}

void DrawLegendRow(Surface& surface, const Category& category, const Font& font, const Rect& row,
                   bool selected, Twips pen) {
  if (selected) surface.Fill(row, legend_colours::Selected);
  const Rect swatch{row.left + Margin, row.top + Margin / 2, row.left + Margin + SwatchWidth,
                    row.bottom - Margin / 2};
  surface.Fill(swatch, category.colour);
  DrawFrame(surface, swatch, selected ? colours::White : SwatchEdge, pen);
  surface.Text(LegendNameRect(row), LegendText(category), font,
               selected ? colours::White : colours::Black, NameFlags);
}

void DrawLegend(Surface& surface, const CategoryTable& categories, const Font& font,
                const Rect& visible, Twips rowWidth, int selected) {
  surface.Fill(visible, legend_colours::Back);
  if (visible.bottom <= 0) return;
  for (int index = LegendRowAt(std::max(0.0, visible.top), categories);
       index > 0 && index <= categories.Count(); ++index) {
    const Rect row = LegendRowRect(index, rowWidth);
    if (row.top >= visible.bottom) break;
    DrawLegendRow(surface, categories.At(index), font, row, index == selected);
  }
}

}  // namespace velkor
