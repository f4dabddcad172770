// platform/windows/elements/FittedFont.cpp: tries fonts until the text fits.
#include "platform/windows/elements/FittedFont.h"

#include <algorithm>
#include <utility>

#include "platform/windows/elements/WindowText.h"

namespace velkor {

void FittedFont::Give(HWND window, const LOGFONTW& wanted, const std::wstring& text, SIZE room) {
  if (room.cx <= 0 || room.cy <= 0) return;
  if (room.cx == room_.cx && room.cy == room_.cy && text == text_) return;
  room_ = room;
  text_ = text;
  LOGFONTW font = wanted;
  Use(window, font);
  // Sizes of letters and of lines are not quite proportional, so one step may not do.
  while (font.lfHeight < -1) {
    const SIZE line = LineSize(window, text.empty() ? L"X" : text);
    if (line.cx <= room.cx && line.cy <= room.cy) return;
    const double times = std::min(static_cast<double>(room.cx) / std::max<LONG>(line.cx, 1),
                                  static_cast<double>(room.cy) / line.cy);
    font.lfHeight = std::max(font.lfHeight + 1, static_cast<LONG>(font.lfHeight * times));
    Use(window, font);
  }
}

void FittedFont::Use(HWND window, const LOGFONTW& font) {
  FontHandle made(::CreateFontIndirectW(&font));
  ::SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(made.get()), FALSE);
  font_ = std::move(made);
}

}  // namespace velkor
