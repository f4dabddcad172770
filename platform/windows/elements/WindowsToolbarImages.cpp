// platform/windows/elements/WindowsToolbarImages.cpp: the pictures of toolbar buttons in a list.
#include "platform/windows/elements/WindowsToolbarImages.h"

#include <cstddef>
#include <vector>

#include "platform/Elements.h"
#include "platform/windows/drawing/GdiHandles.h"
#include "support/ToolbarIcons.h"

namespace velkor {
namespace {

Colour FromNative(COLORREF colour) {
  return Colour::FromRgb(GetRValue(colour), GetGValue(colour), GetBValue(colour));
}

}  // namespace

ImageListHandle MakeToolbarImages(int side, int height, COLORREF lines, COLORREF back, bool faded) {
  constexpr int Count = toolbar_images::Last;
  const Colour ground = FromNative(back);
  const Colour drawn = faded ? FadedLines(FromNative(lines), ground) : FromNative(lines);
  const HDC screen = ::GetDC(nullptr);
  const MemoryDc dc(::CreateCompatibleDC(screen));
  const BitmapHandle strip(::CreateCompatibleBitmap(screen, Count * side, height));
  ::ReleaseDC(nullptr, screen);
  const HGDIOBJ before = ::SelectObject(dc.get(), strip.get());
  const RECT all{0, 0, Count * side, height};
  ::SetBkColor(dc.get(), back);
  ::ExtTextOutW(dc.get(), 0, 0, ETO_OPAQUE, &all, nullptr, 0, nullptr);
  const int top = (height - side) / 2;
  for (int image = 1; image <= Count; ++image) {
    const std::vector<IconPixel> pixels = DrawToolbarIcon(image, side, drawn);
    for (int place = 0; place < side * side; ++place) {
      const Colour seen = Over(ground, pixels[static_cast<std::size_t>(place)]);
      ::SetPixelV(dc.get(), (image - 1) * side + place % side, top + place / side,
                  RGB(seen.Red(), seen.Green(), seen.Blue()));
    }
  }
  ::SelectObject(dc.get(), before);
  ImageListHandle list(::ImageList_Create(side, height, ILC_COLOR24 | ILC_MASK, Count, 0));
  if (list) ::ImageList_AddMasked(list.get(), strip.get(), back);
  return list;
}

}  // namespace velkor
