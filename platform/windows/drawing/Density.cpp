// platform/windows/drawing/Density.cpp: lengths by dots to the inch, fonts by the system's
// settings.
#include "platform/windows/drawing/Density.h"

namespace velkor {

PixelSize Density::Pixel() const {
  constexpr float TwipsPerInch = 1440;
  const float side = TwipsPerInch / static_cast<float>(dots_);
  return {side, side};
}

Point Density::ToTwips(POINT pixels) const {
  const auto side = static_cast<double>(Pixel().width);
  return {pixels.x * side, pixels.y * side};
}

Extent Density::ToTwips(SIZE pixels) const {
  const Point corner = ToTwips(POINT{pixels.cx, pixels.cy});
  return {corner.x, corner.y};
}

Density DensityOf(HWND window) {
  return Density(DotsPerInch(window));
}

FontHandle MakeDialogFont(Density density) {
  const LOGFONTW wanted = MessageFont(density.Dots());
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
