// view/Face.cpp: where the control's surfaces lie, and the drawing of all of them.
#include "view/Face.h"

#include <algorithm>

#include "view/GridPainter.h"
#include "view/HeaderPainter.h"
#include "view/LegendPainter.h"

namespace velkor {
namespace {

constexpr Twips LegendWidth = 2100;
constexpr double CaptionPoints = 13;
constexpr TextFlags CaptionFlags =
    text_flags::Left | text_flags::SingleLine | text_flags::VerticalCentre | text_flags::NoPrefix;

void DrawGrid(Surface& surface, const Rect& view, const YearGrid& grid,
              const FaceContent& content) {
  const ViewScope scope(surface, view, {view.left, view.top});
  GridPainter painter(surface, grid, content.font, {0, 0, view.Width(), view.Height()});
  painter.DrawBackground();
  painter.DrawDayNumbers();
  painter.DrawEvents();
  painter.DrawToday(content.today);
}

}  // namespace

FaceLayout DivideFace(Extent control, Twips captionHeight) {
  FaceLayout layout;
  layout.caption = {FaceMargin, 0, control.width - FaceMargin, captionHeight};
  // A control too narrow for a legend beside the grid keeps half its width for the grid.
  const Twips legendLeft = std::max(control.width - FaceMargin - LegendWidth, control.width / 2);
  const Twips bottom = control.height - FaceMargin;
  layout.picParent = {FaceMargin, captionHeight, legendLeft - FaceMargin, bottom};
  const Rect& parent = layout.picParent;
  layout.picHeadCol = {parent.left + MonthColumnWidth, parent.top, parent.right,
                       parent.top + HeaderRowHeight};
  layout.picHeadRow = {parent.left, parent.top + HeaderRowHeight, parent.left + MonthColumnWidth,
                       parent.bottom};
  layout.gridView = {layout.picHeadCol.left, layout.picHeadCol.bottom, parent.right, parent.bottom};
  layout.picCatView = {legendLeft, parent.top, control.width - FaceMargin, bottom};
  return layout;
}

Twips LeastControlHeight(const YearGrid& grid, PixelSize pixel) {
  return CaptionHeight + HeightWithoutScrolling(grid.Layout(), pixel, grid.MinBandHeight()) +
         FaceMargin;
}

std::string YearCaption(int viewYear) {
  return "Year " + std::to_string(viewYear);
}

void DrawFace(Surface& surface, const FaceLayout& layout, const YearGrid& grid,
              const FaceContent& content) {
  surface.Fill({0, 0, layout.picCatView.right + FaceMargin, layout.picCatView.bottom + FaceMargin},
               face_colours::Back);
  Font captionFont = content.font;
  captionFont.size = CaptionPoints;
  captionFont.bold = true;
  surface.Text(layout.caption, content.caption, captionFont, colours::Black, CaptionFlags);

  surface.Fill(layout.picParent, header_colours::Back);
  DrawGrid(surface, layout.gridView, grid, content);
  {
    const ViewScope scope(surface, layout.picHeadCol,
                          {layout.picHeadCol.left, layout.picHeadCol.top});
    DrawHeaderRow(surface, grid.Geometry(), content.names, content.font);
  }
  {
    const Rect& view = layout.picHeadRow;
    const ViewScope scope(surface, view, {view.left, view.top});
    DrawMonthColumn(surface, SceneOf(grid), content.names, content.font,
                    {0, 0, view.Width(), view.Height()});
  }
  {
    const Rect& view = layout.picCatView;
    const ViewScope scope(surface, view, {view.left, view.top});
    DrawLegend(surface, grid.Categories(), content.font, {0, 0, view.Width(), view.Height()},
               view.Width());
  }
  surface.Outline(layout.picParent, face_colours::Frame, 1);
  surface.Outline(layout.picCatView, face_colours::Frame, 1);
}

}  // namespace velkor
