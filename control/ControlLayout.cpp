// control/ControlLayout.cpp: where the child elements of the control lie.
#include "control/ControlLayout.h"

#include <algorithm>
#include <initializer_list>

#include "control/YearPlanElements.h"
#include "view/GridGeometry.h"
#include "view/Scrolling.h"

namespace velkor {
namespace {

/// Free room around the parts.
constexpr Twips Margin = 90;
constexpr Twips CommandsHeight = 600;
constexpr Twips CaptionHeight = 390;
constexpr Twips LegendWidth = 2100;
constexpr Twips Gap = 120;
constexpr Twips ButtonWidth = 510;
constexpr Twips YearWidth = 1650;
constexpr Twips LeastDateWidth = 1500;
constexpr Twips CommandWidth = 3000;
constexpr Twips LogoSize = 270;

/// Shows an element at a place, or hides it when there is none.
void Place(Element& element, const Rect& bounds, bool visible) {
  element.SetBounds(bounds);
  element.SetVisible(visible);
}

void PlaceCommands(YearPlanElements& elements, Extent control, PixelSize pixel) {
  const Twips top = Margin / 2;
  const Twips bottom = CommandsHeight - Margin / 2;
  const auto buttons = static_cast<double>(elements.Toolbar1.Buttons().size());
  Twips left = Margin;
  elements.Toolbar1.SetBounds({left, top, left + buttons * ButtonWidth, bottom});
  left += buttons * ButtonWidth + Gap;
  elements.lblSelectedYear.SetBounds({left, top, left + YearWidth, bottom});
  left += YearWidth + Gap;

  Twips right = control.width - Margin;
  const Twips logoTop = (CommandsHeight - LogoSize) / 2;
  Place(elements.imgLogo, {right - LogoSize, logoTop, right, logoTop + LogoSize},
        right - LogoSize >= left);
  right -= LogoSize + Gap;
  const bool commandFits = right - CommandWidth - Gap - LeastDateWidth >= left;
  Place(elements.Command1, {right - CommandWidth, top + pixel.height, right, bottom - pixel.height},
        commandFits);
  if (commandFits) right -= CommandWidth + Gap;
  Place(elements.lblDate, {left, top, std::max(left, right), bottom},
        right - left >= LeastDateWidth);
}

}  // namespace

Twips StripHeight(StripKind strip) {
  return strip == StripKind::Commands ? CommandsHeight : CaptionHeight;
}

ControlAreas DivideControl(Extent control, StripKind strip) {
  const Twips top = StripHeight(strip);
  const Twips right = control.width - Margin;
  const Twips bottom = control.height - Margin;
  // A control too narrow for a legend beside the grid keeps half its width for the grid.
  const Twips legendLeft = std::max(right - LegendWidth, control.width / 2);
  return {{Margin, top, legendLeft - Margin, bottom}, {legendLeft, top, right, bottom}};
}

Twips LeastControlHeight(Twips gridHeight, StripKind strip) {
  return StripHeight(strip) + gridHeight + Margin;
}

Rect WithFrame(const Rect& area, PixelSize pixel) {
  return {area.left, area.top, std::max(area.left, area.right + pixel.width),
          std::max(area.top, area.bottom + pixel.height)};
}

void PlaceStrip(YearPlanElements& elements, Extent control, PixelSize pixel, StripKind strip) {
  const bool commands = strip == StripKind::Commands;
  elements.Toolbar1.SetVisible(commands);
  if (commands) return PlaceCommands(elements, control, pixel);
  elements.lblSelectedYear.SetBounds({Margin, 0, control.width - Margin, CaptionHeight});
  for (Element* element :
       std::initializer_list<Element*>{&elements.lblDate, &elements.Command1, &elements.imgLogo}) {
    element->SetVisible(false);
  }
}

void PlaceSurfaces(YearPlanElements& elements, const Rect& area, bool scroll, PixelSize pixel) {
  elements.picParent.SetBounds(WithFrame(area, pixel));
  // A control that is too small for its surfaces gives them no room, never less.
  const Twips right = std::max(MonthColumnWidth, area.Width());
  const Twips bottom = std::max(HeaderRowHeight, area.Height());
  const Twips gridRight = scroll ? std::max(MonthColumnWidth, right - ScrollBarWidth) : right;
  // The left and top lines of the frame stay free.
  elements.picHeadCol.SetBounds({MonthColumnWidth, pixel.height, gridRight, HeaderRowHeight});
  elements.picHeadRow.SetBounds({pixel.width, HeaderRowHeight, MonthColumnWidth, bottom});
  elements.pic1.SetBounds({MonthColumnWidth, HeaderRowHeight, gridRight, bottom});
  Place(elements.VScroll1, {gridRight, HeaderRowHeight, right, bottom}, scroll);
}

}  // namespace velkor
