// platform/windows/dialogs/DialogScroll.cpp: sets the bars and moves the windows.
#include "platform/windows/dialogs/DialogScroll.h"

#include <algorithm>

#include "platform/windows/elements/WindowText.h"

namespace velkor {
namespace {

SCROLLINFO InfoOf(HWND dialog, int bar) {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_ALL;
  ::GetScrollInfo(dialog, bar, &info);
  return info;
}

}  // namespace

int DialogScroll::Position(int bar) const {
  return InfoOf(dialog_, bar).nPos;
}

/// The system takes a bar away that has nothing to scroll.
void DialogScroll::FitBar(int bar, int content, int area) const {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE;
  info.nMax = std::max(0, content - 1);
  info.nPage = static_cast<UINT>(std::max(0, area));
  const bool needed = content > area;
  const LONG style = bar == SB_VERT ? WS_VSCROLL : WS_HSCROLL;
  const bool shown = (::GetWindowLongW(dialog_, GWL_STYLE) & style) != 0;
  if (needed || shown) ::SetScrollInfo(dialog_, bar, &info, TRUE);
}

POINT DialogScroll::Fit(SIZE content) {
  // Each bar takes from the room of the other.
  for (int i = 0; i < 2; ++i) {
    RECT area{};
    ::GetClientRect(dialog_, &area);
    FitBar(SB_VERT, static_cast<int>(content.cy), static_cast<int>(area.bottom));
    ::GetClientRect(dialog_, &area);
    FitBar(SB_HORZ, static_cast<int>(content.cx), static_cast<int>(area.right));
  }
  return {-Position(SB_HORZ), -Position(SB_VERT)};
}

int DialogScroll::Wanted(int bar, WORD request) const {
  const SCROLLINFO info = InfoOf(dialog_, bar);
  const int page = static_cast<int>(info.nPage);
  const int line = static_cast<int>(MetricsOfFont(dialog_).tmHeight);
  switch (request) {
    case SB_LINEUP:
      return info.nPos - line;
    case SB_LINEDOWN:
      return info.nPos + line;
    case SB_PAGEUP:
      return info.nPos - page;
    case SB_PAGEDOWN:
      return info.nPos + page;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
      return info.nTrackPos;
    case SB_TOP:
      return 0;
    case SB_BOTTOM:
      return info.nMax;
    default:
      return info.nPos;
  }
}

void DialogScroll::MoveTo(int bar, int position) {
  const int before = Position(bar);
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_POS;
  info.nPos = position;
  ::SetScrollInfo(dialog_, bar, &info, TRUE);
  // The system keeps it within the range.
  const int by = before - Position(bar);
  if (by == 0) return;
  ::ScrollWindowEx(dialog_, bar == SB_HORZ ? by : 0, bar == SB_VERT ? by : 0, nullptr, nullptr,
                   nullptr, nullptr, SW_SCROLLCHILDREN | SW_INVALIDATE | SW_ERASE);
}

bool DialogScroll::Hear(UINT message, WPARAM wParam) {
  switch (message) {
    case WM_VSCROLL:
    case WM_HSCROLL: {
      const int bar = message == WM_VSCROLL ? SB_VERT : SB_HORZ;
      MoveTo(bar, Wanted(bar, LOWORD(wParam)));
      return true;
    }
    case WM_MOUSEWHEEL: {
      constexpr int Lines = 3;
      const int by = static_cast<int>(MetricsOfFont(dialog_).tmHeight) * Lines;
      MoveTo(SB_VERT,
             Position(SB_VERT) - ::MulDiv(GET_WHEEL_DELTA_WPARAM(wParam), by, WHEEL_DELTA));
      return true;
    }
    default:
      return false;
  }
}

void DialogScroll::Show(HWND item) {
  RECT area{};
  RECT place{};
  ::GetClientRect(dialog_, &area);
  ::GetWindowRect(item, &place);
  ::MapWindowPoints(nullptr, dialog_, reinterpret_cast<POINT*>(&place), 2);
  const auto show = [this](int bar, LONG begin, LONG end, LONG room) {
    // Of what is larger than the area the beginning counts.
    const LONG needed = end - begin > room ? begin - room / 2 : end - room;
    const LONG by = begin < 0 ? begin : std::min(begin, std::max<LONG>(0, needed));
    if (by != 0) MoveTo(bar, Position(bar) + static_cast<int>(by));
  };
  show(SB_VERT, place.top, place.bottom, area.bottom);
  show(SB_HORZ, place.left, place.right, area.right);
}

}  // namespace velkor
