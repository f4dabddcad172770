// control/ControlLayout.cpp: where the child elements of the control lie.
#include "control/ControlLayout.h"

#include <algorithm>

#include "control/YearPlanElements.h"

namespace velkor {
namespace {

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

}  // namespace

void PlaceStrip(YearPlanElements& elements, Extent control, PixelSize pixel) {
  const Twips top = FaceMargin / 2;
  const Twips bottom = StripHeight - FaceMargin / 2;
  const auto buttons = static_cast<double>(elements.Toolbar1.Buttons().size());
  Twips left = FaceMargin;
  elements.Toolbar1.SetBounds({left, top, left + buttons * ButtonWidth, bottom});
  left += buttons * ButtonWidth + Gap;
  elements.lblSelectedYear.SetBounds({left, top, left + YearWidth, bottom});
  left += YearWidth + Gap;

  Twips right = control.width - FaceMargin;
  const Twips logoTop = (StripHeight - LogoSize) / 2;
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

void PlaceSurfaces(YearPlanElements& elements, const FaceLayout& face, bool scroll,
                   PixelSize pixel) {
  const Rect& parent = face.picParent;
  // A control that is too small for its surfaces gives them no room, never less.
  const Twips right = std::max(face.gridView.left, parent.right - pixel.width);
  const Twips bottom = std::max(face.gridView.top, parent.bottom - pixel.height);
  const Twips gridRight = scroll ? std::max(face.gridView.left, right - ScrollBarWidth) : right;
  elements.picParent.SetBounds({parent.left, parent.top, std::max(parent.left, parent.right),
                                std::max(parent.top, parent.bottom)});
  // The frame of picParent stays free around its surfaces.
  elements.picHeadCol.SetBounds(
      {face.picHeadCol.left, parent.top + pixel.height, gridRight, face.picHeadCol.bottom});
  elements.picHeadRow.SetBounds(
      {parent.left + pixel.width, face.picHeadRow.top, face.picHeadRow.right, bottom});
  elements.pic1.SetBounds({face.gridView.left, face.gridView.top, gridRight, bottom});
  Place(elements.VScroll1, {gridRight, face.gridView.top, right, bottom}, scroll);
}

}  // namespace velkor
