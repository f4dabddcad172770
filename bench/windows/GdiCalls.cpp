// bench/windows/GdiCalls.cpp: the calls as a surface's own rules turn out for them.
#include "bench/windows/GdiCalls.h"

#include "platform/windows/system/Wide.h"
#include "support/TextPrefixes.h"

namespace velkor {
namespace {

RECT ToWindows(const PixelRect& rect) {
  return {rect.left, rect.top, rect.right, rect.bottom};
}

COLORREF ToWindows(Colour colour) {
  return RGB(colour.Red(), colour.Green(), colour.Blue());
}

}  // namespace

void GdiCalls::Replay(HDC dc) const {
  const SavedDc saved(dc);
  ::SetBkMode(dc, TRANSPARENT);
  HFONT font = nullptr;
  for (const Call& call : calls_) {
    if (call.font == nullptr) {
      ::SetBkColor(dc, call.colour);
      ::ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &call.area, nullptr, 0, nullptr);
      continue;
    }
    if (call.font != font) ::SelectObject(dc, font = call.font);
    ::SetTextColor(dc, call.colour);
    RECT area = call.area;
    if (call.cut) {
      ::SaveDC(dc);
      ::IntersectClipRect(dc, call.clip.left, call.clip.top, call.clip.right, call.clip.bottom);
    }
    ::DrawTextW(dc, call.text.c_str(), static_cast<int>(call.text.size()), &area, call.flags);
    if (call.cut) ::RestoreDC(dc, -1);
  }
}

void GdiCalls::Keep(const PixelRect& pixels, Colour colour) {
  const PixelRect seen = views_.Clipped(pixels);
  if (seen.Width() <= 0 || seen.Height() <= 0) return;
  calls_.push_back({.area = ToWindows(seen), .colour = ToWindows(colour)});
}

void GdiCalls::Fill(const Rect& rect, Colour colour) {
  Keep(views_.Pixels(rect), colour);
}

void GdiCalls::Outline(const Rect& rect, Colour colour, int pen) {
  for (const PixelRect& bar : OutlineBars(views_.Pixels(rect), pen)) Keep(bar, colour);
}

void GdiCalls::Text(const Rect& rect, std::string_view text, const Font& font, Colour colour,
                    TextFlags flags) {
  const PixelRect pixels = views_.Pixels(rect);
  const PixelRect seen = views_.Clipped(pixels);
  if (text.empty() || seen.Width() <= 0 || seen.Height() <= 0) return;
  const bool literal = (flags & text_flags::NoPrefix) != 0;
  calls_.push_back({.area = ToWindows(pixels),
                    .colour = ToWindows(colour),
                    .font = Ready(font),
                    .flags = flags | DT_NOPREFIX,
                    .text = ToWide(literal ? text : WithoutPrefixes(text)),
                    .cut = seen != pixels,
                    .clip = ToWindows(seen)});
}

HFONT GdiCalls::Ready(const Font& font) {
  measure_.Measure(" ", font);
  return static_cast<HFONT>(::GetCurrentObject(dc_, OBJ_FONT));
}

}  // namespace velkor
