// platform/windows/drawing/GdiSurface.cpp: bars as opaque text backgrounds, text by DrawText.
#include "platform/windows/drawing/GdiSurface.h"

#include <algorithm>
#include <cmath>

#include "platform/windows/system/AnsiText.h"
#include "platform/windows/system/Wide.h"
#include "values/Twips.h"

namespace velkor {
namespace {

COLORREF ToWindows(Colour colour) {
  return RGB(colour.Red(), colour.Green(), colour.Blue());
}

RECT ToWindows(const PixelRect& rect) {
  return {rect.left, rect.top, rect.right, rect.bottom};
}

/// The code page in which ANSI functions take texts for the font of a device context: that of its
/// character set ("TranslateCharsetInfo"). 0 where there is none.
UINT PageOfFont(HDC dc) {
  const auto set = static_cast<DWORD_PTR>(::GetTextCharset(dc));
  CHARSETINFO info{};
  const BOOL known = ::TranslateCharsetInfo(reinterpret_cast<DWORD*>(set), &info, TCI_SRCCHARSET);
  return known && set != SYMBOL_CHARSET ? info.ciACP : 0;
}

}  // namespace

FontHandle MakeFont(const Font& font, PixelSize pixel) {
  const double pixels = font.size * TwipsPerPoint / static_cast<double>(pixel.height);
  LOGFONTW wanted{};
  wanted.lfHeight = pixels >= 1 ? -static_cast<LONG>(std::fmin(std::round(pixels), 2000)) : -1;
  wanted.lfWeight = font.bold ? FW_BOLD : FW_NORMAL;
  wanted.lfItalic = font.italic;
  wanted.lfCharSet = static_cast<BYTE>(font.charset);
  wanted.lfOutPrecision = OUT_TT_PRECIS;
  // Without a face: one without serifs that has the character set.
  wanted.lfPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
  ToWide(font.face).copy(wanted.lfFaceName, LF_FACESIZE - 1);
  return FontHandle(::CreateFontIndirectW(&wanted));
}

GdiSurface::GdiSurface(HDC dc, PixelSize pixel) : dc_(dc), views_(pixel), saved_(dc) {
  ::SetMapMode(dc_, MM_TEXT);
  ::SetBkMode(dc_, TRANSPARENT);
  ::SetTextAlign(dc_, TA_LEFT | TA_TOP | TA_NOUPDATECP);
}

void GdiSurface::Paint(const PixelRect& area, Colour colour) {
  const PixelRect seen = views_.Clipped(area);
  if (seen.Width() <= 0 || seen.Height() <= 0) return;
  ++drawings_;
  const RECT rect = ToWindows(seen);
  ::SetBkColor(dc_, ToWindows(colour));
  ::ExtTextOutW(dc_, 0, 0, ETO_OPAQUE, &rect, nullptr, 0, nullptr);
}

void GdiSurface::Fill(const Rect& rect, Colour colour) {
  Paint(views_.Pixels(rect), colour);
}

void GdiSurface::Outline(const Rect& rect, Colour colour, int pen) {
  for (const PixelRect& bar : OutlineBars(views_.Pixels(rect), pen)) Paint(bar, colour);
}

void GdiSurface::Line(Point from, Point to, Colour colour, int pen) {
  const PixelRect ends = views_.Pixels({from.x, from.y, to.x, to.y});
  if (ends.Width() == 0 || ends.Height() == 0) {
    Paint(LineBar(ends, pen), colour);
    return;
  }
  ++drawings_;
  const PenHandle handle(::CreatePen(PS_SOLID, pen, ToWindows(colour)));
  const SavedDc saved(dc_);
  const PixelRect& clip = views_.Clip();
  ::IntersectClipRect(dc_, clip.left, clip.top, clip.right, clip.bottom);
  ::SelectObject(dc_, handle.get());
  ::MoveToEx(dc_, ends.left, ends.top, nullptr);
  ::LineTo(dc_, ends.right, ends.bottom);
  // LineTo leaves out the end; a line of one point draws it.
  ::LineTo(dc_, ends.right + 1, ends.bottom);
}

void GdiSurface::Use(const Font& font) {
  auto found = std::find_if(fonts_.begin(), fonts_.end(),
                            [&](const MadeFont& each) { return each.font == font; });
  const bool isNew = found == fonts_.end();
  if (isNew) found = fonts_.insert(found, {.font = font, .handle = MakeFont(font, Pixel())});
  if (found->handle.get() == font_) return;
  font_ = found->handle.get();
  ::SelectObject(dc_, font_);
  if (isNew) found->page = PageOfFont(dc_);
  page_ = found->page;
}

void GdiSurface::DrawLines(std::string_view text, RECT& area, TextFlags flags) {
  if (const auto bytes = WholeInCodePage(text, page_)) {
    ::DrawTextA(dc_, bytes->c_str(), static_cast<int>(bytes->size()), &area, flags);
    return;
  }
  // Subjects come in every script, and one code page has only some of them.
  const std::wstring wide = ToWide(text);
  ::DrawTextW(dc_, wide.c_str(), static_cast<int>(wide.size()), &area, flags);
}

void GdiSurface::Text(const Rect& rect, std::string_view text, const Font& font, Colour colour,
                      TextFlags flags) {
  const PixelRect pixels = views_.Pixels(rect);
  const PixelRect seen = views_.Clipped(pixels);
  if (text.empty() || seen.Width() <= 0 || seen.Height() <= 0) return;
  ++drawings_;
  Use(font);
  ::SetTextColor(dc_, ToWindows(colour));
  RECT area = ToWindows(pixels);
  if (seen == pixels) {
    DrawLines(text, area, flags);
    return;
  }
  const SavedDc saved(dc_);
  ::IntersectClipRect(dc_, seen.left, seen.top, seen.right, seen.bottom);
  DrawLines(text, area, flags);
}

void GdiSurface::DrawBy(const Rect& rect, const std::function<void(HDC, const PixelRect&)>& draw) {
  const PixelRect pixels = views_.Pixels(rect);
  const PixelRect seen = views_.Clipped(pixels);
  if (seen.Width() <= 0 || seen.Height() <= 0) return;
  ++drawings_;
  const SavedDc saved(dc_);
  ::IntersectClipRect(dc_, seen.left, seen.top, seen.right, seen.bottom);
  draw(dc_, pixels);
}

Extent GdiSurface::Measure(std::string_view text, const Font& font) {
  Use(font);
  const std::wstring wide = ToWide(text);
  SIZE size{};
  ::GetTextExtentPoint32W(dc_, wide.c_str(), static_cast<int>(wide.size()), &size);
  TEXTMETRICW metrics{};
  ::GetTextMetricsW(dc_, &metrics);
  return {size.cx * static_cast<double>(Pixel().width),
          metrics.tmHeight * static_cast<double>(Pixel().height)};
}

Extent GdiSurface::MeasureLines(std::string_view text, const Font& font, Twips width,
                                TextFlags flags) {
  if (text.empty()) return {};
  Use(font);
  RECT area{0, 0, ToPixel(width, Pixel().width), 0};
  DrawLines(text, area, flags | DT_CALCRECT);
  return {(area.right - area.left) * static_cast<double>(Pixel().width),
          (area.bottom - area.top) * static_cast<double>(Pixel().height)};
}

}  // namespace velkor
