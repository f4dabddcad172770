// platform/windows/drawing/ScreenUnits.cpp: asks the screen for its resolution.
#include "platform/windows/drawing/ScreenUnits.h"

#include <string>

namespace velkor {

PixelSize ScreenPixel() {
  constexpr float TwipsPerInch = 1440;
  const HDC screen = ::GetDC(nullptr);
  const int across = ::GetDeviceCaps(screen, LOGPIXELSX);
  const int down = ::GetDeviceCaps(screen, LOGPIXELSY);
  ::ReleaseDC(nullptr, screen);
  if (across <= 0 || down <= 0) return {};
  return {TwipsPerInch / static_cast<float>(across), TwipsPerInch / static_cast<float>(down)};
}

PixelRect ToScreenPixels(const Rect& bounds) {
  return ToPixels(bounds, ScreenPixel());
}

Point ToTwips(POINT pixels) {
  const PixelSize pixel = ScreenPixel();
  return {pixels.x * static_cast<double>(pixel.width),
          pixels.y * static_cast<double>(pixel.height)};
}

Extent ToTwips(SIZE pixels) {
  const Point corner = ToTwips(POINT{pixels.cx, pixels.cy});
  return {corner.x, corner.y};
}

POINT ToScreenPixels(Point position) {
  const PixelSize pixel = ScreenPixel();
  return {ToPixel(position.x, pixel.width), ToPixel(position.y, pixel.height)};
}

int ScreenLength(int pixelsAt96) {
  return ToPixel(pixelsAt96 * TwipsPerPixel, ScreenPixel().width);
}

FontHandle MakeDialogFont() {
  constexpr double Points = 9;
  LOGFONTW wanted{};
  wanted.lfHeight = -ToPixel(Points * TwipsPerPoint, ScreenPixel().height);
  wanted.lfWeight = FW_NORMAL;
  wanted.lfCharSet = DEFAULT_CHARSET;
  std::wstring(L"Tahoma").copy(wanted.lfFaceName, LF_FACESIZE - 1);
  return FontHandle(::CreateFontIndirectW(&wanted));
}

FontHandle MakeHeadingFont(HFONT ordinary, double scale) {
  LOGFONTW font{};
  if (::GetObjectW(ordinary, sizeof font, &font) == 0) return nullptr;
  font.lfHeight = static_cast<LONG>(font.lfHeight * scale);
  font.lfWeight = FW_BOLD;
  return FontHandle(::CreateFontIndirectW(&font));
}

}  // namespace velkor
