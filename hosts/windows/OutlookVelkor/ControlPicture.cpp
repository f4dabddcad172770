// hosts/windows/OutlookVelkor/ControlPicture.cpp: each element by its own painting, in its place.
#include "hosts/windows/OutlookVelkor/ControlPicture.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "control/YearPlanElements.h"
#include "platform/windows/drawing/DibSection.h"
#include "platform/windows/drawing/GdiSurface.h"
#include "platform/windows/drawing/ScreenUnits.h"
#include "platform/windows/elements/WindowsToolbarImages.h"
#include "view/Face.h"

namespace velkor {
namespace {

constexpr double CaptionPoints = 13;
constexpr double TextPoints = 9;

Font FontOf(double points, bool bold = false) {
  Font font;
  font.face = "Tahoma";
  font.size = points;
  font.bold = bold;
  return font;
}

void DrawText(Surface& surface, const Element& element, const std::string& text, const Font& font,
              TextFlags flags) {
  if (!element.Visible() || text.empty()) return;
  surface.Text(element.Bounds(), text, font, colours::Black,
               flags | text_flags::SingleLine | text_flags::VerticalCentre |
                   text_flags::WordEllipsis | text_flags::NoPrefix);
}

void DrawPicture(Surface& surface, const PictureBox& picture) {
  if (!picture.Visible() || !picture.onPaint) return;
  const Rect& bounds = picture.Bounds();
  if (bounds.Width() <= 0 || bounds.Height() <= 0) return;
  const ViewScope view(surface, bounds, {bounds.left, bounds.top});
  picture.onPaint(surface, {0, 0, bounds.Width(), bounds.Height()});
}

/// A picture that another one holds: in its coordinates, and clipped by it.
void DrawHeld(Surface& surface, const PictureBox& holder, const PictureBox& picture) {
  if (!holder.Visible()) return;
  const Rect& bounds = holder.Bounds();
  const ViewScope view(surface, bounds, {bounds.left, bounds.top});
  DrawPicture(surface, picture);
}

/// The buttons' pictures, where the toolbar's window has them.
void DrawToolbar(GdiSurface& surface, const Toolbar& toolbar) {
  const Rect& bounds = toolbar.Bounds();
  const Twips side = std::min(ToolbarButtonSide, bounds.Height());
  const COLORREF back =
      RGB(face_colours::Back.Red(), face_colours::Back.Green(), face_colours::Back.Blue());
  Twips left = bounds.left;
  for (const ToolbarButton& button : toolbar.Buttons()) {
    const Rect picture{left + ToolbarImageMargin, bounds.top + ToolbarImageMargin,
                       left + side - ToolbarImageMargin, bounds.top + side - ToolbarImageMargin};
    left += side;
    surface.DrawBy(picture, [&](HDC dc, const PixelRect& pixels) {
      const COLORREF lines = button.enabled ? RGB(0, 0, 0) : FadedLines(RGB(0, 0, 0), back);
      const ImageListHandle images = MakeToolbarImages(pixels.Width(), lines, back);
      ::ImageList_Draw(images.get(), button.image - 1, dc, pixels.left, pixels.top, ILD_NORMAL);
    });
  }
}

void DrawStrip(GdiSurface& surface, const YearPlanElements& elements) {
  DrawToolbar(surface, elements.Toolbar1);
  DrawText(surface, elements.lblSelectedYear, elements.lblSelectedYear.Caption(),
           FontOf(CaptionPoints, true), text_flags::Left);
  DrawText(surface, elements.lblDate, elements.lblDate.Caption(), FontOf(TextPoints),
           text_flags::Left);
  if (elements.Command1.Visible()) {
    surface.Outline(elements.Command1.Bounds(), face_colours::Frame, 1);
    DrawText(surface, elements.Command1, elements.Command1.Caption(), FontOf(TextPoints),
             text_flags::Centre);
  }
  if (elements.imgLogo.Visible()) {
    surface.Fill(elements.imgLogo.Bounds(), elements.imgLogo.FillColour());
    surface.Outline(elements.imgLogo.Bounds(), face_colours::Frame, 1);
  }
}

/// A metafile of the older kind knows no pixels and measures no text: it takes a picture instead.
void DrawAsPicture(YearPlanElements& elements, Extent size, HDC metafile, const RECTL& bounds) {
  const POINT pixels = ToScreenPixels(Point{size.width, size.height});
  const DibSection picture(std::max<int>(pixels.x, 1), std::max<int>(pixels.y, 1));
  DrawControl(elements, size, picture.Dc(), {0, 0, picture.Width(), picture.Height()});
  ::GdiFlush();
  // Recorded rows run upwards.
  std::vector<std::uint32_t> rows;
  for (int y = picture.Height() - 1; y >= 0; --y) {
    rows.insert(rows.end(), picture.Row(y), picture.Row(y) + picture.Width());
  }
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = picture.Width();
  info.bmiHeader.biHeight = picture.Height();
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  // Counts though it follows from the rest: it is how much is recorded.
  info.bmiHeader.biSizeImage = static_cast<DWORD>(rows.size() * sizeof rows[0]);
  ::StretchDIBits(metafile, bounds.left, bounds.top, bounds.right - bounds.left,
                  bounds.bottom - bounds.top, 0, 0, picture.Width(), picture.Height(), rows.data(),
                  &info, DIB_RGB_COLORS, SRCCOPY);
}

}  // namespace

void DrawControl(YearPlanElements& elements, Extent size, HDC dc, const RECTL& bounds) {
  if (::GetObjectType(dc) == OBJ_METADC) {
    DrawAsPicture(elements, size, dc, bounds);
    return;
  }
  const SavedDc saved(dc);
  POINT corners[2] = {{bounds.left, bounds.top}, {bounds.right, bounds.bottom}};
  ::LPtoDP(dc, corners, 2);
  const int width = corners[1].x - corners[0].x;
  const int height = corners[1].y - corners[0].y;
  if (width <= 0 || height <= 0) return;
  ::SetMapMode(dc, MM_TEXT);
  ::SetViewportOrgEx(dc, corners[0].x, corners[0].y, nullptr);
  ::SetWindowOrgEx(dc, 0, 0, nullptr);
  ::IntersectClipRect(dc, 0, 0, width, height);
  GdiSurface surface(
      dc, {static_cast<float>(size.width / width), static_cast<float>(size.height / height)});
  surface.Fill({0, 0, size.width, size.height}, face_colours::Back);
  DrawStrip(surface, elements);
  for (const PictureBox* picture :
       {&elements.picParent, &elements.picHeadCol, &elements.picHeadRow, &elements.pic1}) {
    DrawPicture(surface, *picture);
  }
  DrawPicture(surface, elements.legend.picCatView);
  DrawHeld(surface, elements.legend.picCatView, elements.legend.picCats);
}

}  // namespace velkor
