// hosts/windows/OutlookVelkor/ControlPicture.cpp: the picture of the control on a device context.
#include "hosts/windows/OutlookVelkor/ControlPicture.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <vector>

#include "control/Picture.h"
#include "control/YearPlanElements.h"
#include "platform/windows/drawing/Density.h"
#include "platform/windows/drawing/DibSection.h"
#include "platform/windows/drawing/GdiSurface.h"

namespace velkor {
namespace {

using Painter = std::function<void(HDC dc, const RECTL& bounds)>;

/// A metafile of the older kind knows no pixels and measures no text: it takes a picture instead.
void DrawAsPicture(Extent size, HDC metafile, const RECTL& bounds, const Painter& paint) {
  const POINT pixels = DensityOf(nullptr).ToPixels(Point{size.width, size.height});
  const DibSection picture(std::max<int>(pixels.x, 1), std::max<int>(pixels.y, 1));
  paint(picture.Dc(), {0, 0, picture.Width(), picture.Height()});
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
    DrawAsPicture(size, dc, bounds,
                  [&](HDC within, const RECTL& all) { DrawControl(elements, size, within, all); });
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
  DrawControl(surface, elements, size);
}

void DrawPicture(HENHMETAFILE picture, Extent size, HDC dc, const RECTL& bounds) {
  const Painter play = [picture](HDC within, const RECTL& all) {
    const SavedDc saved(within);
    const RECT frame{all.left, all.top, all.right, all.bottom};
    ::PlayEnhMetaFile(within, picture, &frame);
  };
  if (::GetObjectType(dc) == OBJ_METADC) {
    DrawAsPicture(size, dc, bounds, play);
  } else {
    play(dc, bounds);
  }
}

}  // namespace velkor
