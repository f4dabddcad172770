// platform/windows/elements/PeerDrawing.cpp: what parents say of backgrounds, and what texts need.
#include "platform/windows/elements/PeerDrawing.h"

#include "platform/windows/system/Wide.h"

namespace velkor {

PeerBackground BackgroundOf(HWND child, HDC dc) {
  const HWND parent = ::GetParent(child);
  const LRESULT answer = ::SendMessageW(parent, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc),
                                        reinterpret_cast<LPARAM>(child));
  if (answer != 0) return {reinterpret_cast<HBRUSH>(answer), ::GetBkColor(dc)};
  ::SetTextColor(dc, ::GetSysColor(COLOR_BTNTEXT));
  ::SetBkColor(dc, ::GetSysColor(COLOR_BTNFACE));
  return {::GetSysColorBrush(COLOR_BTNFACE), ::GetSysColor(COLOR_BTNFACE)};
}

SIZE TextSize(HWND window, const std::string& utf8, UINT format, int width) {
  const std::wstring wide = ToWide(utf8);
  RECT area{0, 0, width, 0};
  const HDC dc = ::GetDC(window);
  const HGDIOBJ font = reinterpret_cast<HGDIOBJ>(::SendMessageW(window, WM_GETFONT, 0, 0));
  const HGDIOBJ before = font != nullptr ? ::SelectObject(dc, font) : nullptr;
  ::DrawTextW(dc, wide.c_str(), static_cast<int>(wide.size()), &area, format | DT_CALCRECT);
  if (before != nullptr) ::SelectObject(dc, before);
  ::ReleaseDC(window, dc);
  return {area.right - area.left, area.bottom - area.top};
}

}  // namespace velkor
