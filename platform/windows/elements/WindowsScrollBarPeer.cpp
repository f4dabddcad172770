// platform/windows/elements/WindowsScrollBarPeer.cpp: scroll bars as windows of their own.
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "platform/windows/elements/MakePeer.h"

namespace velkor {
namespace {

/// The system takes the direction when it makes the window.
DWORD DirectionOf(const Rect& bounds) {
  return bounds.Width() > bounds.Height() ? SBS_HORZ : SBS_VERT;
}

class ScrollBarPeer : public WindowsPeer {
 public:
  ScrollBarPeer(ScrollBar& scrollBar, HWND parent, Placement placement)
      : WindowsPeer(scrollBar, parent, placement, L"SCROLLBAR", DirectionOf(scrollBar.Bounds())),
        scrollBar_(scrollBar) {
    Changed();
  }

 protected:
  void Mirror() override {
    SetSpokenText();
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    // A bar without a range stays, unlit.
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
    const int page = std::max(1, scrollBar_.LargeChange());
    info.nPage = static_cast<UINT>(page);
    // The last position that the thumb reaches is that where the last page begins.
    info.nMax = static_cast<int>(
        std::min<std::int64_t>(std::int64_t{scrollBar_.Max()} + page - 1, INT32_MAX));
    info.nPos = scrollBar_.Value();
    ::SetScrollInfo(Window(), SB_CTL, &info, TRUE);
    if (!scrollBar_.Enabled()) ::EnableWindow(Window(), FALSE);
  }

  std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM /*lParam*/) override {
    switch (message) {
      case WM_HSCROLL + Reflected:
      case WM_VSCROLL + Reflected:
        Scroll(LOWORD(wParam));
        return 0;
      case WM_MOUSEWHEEL:
        Turn(static_cast<double>(GET_WHEEL_DELTA_WPARAM(wParam)) / WHEEL_DELTA);
        return 0;
      default:
        return std::nullopt;
    }
  }

 private:
  void Scroll(WORD request) {
    switch (request) {
      case SB_LINEUP:
        return Step(-scrollBar_.SmallChange());
      case SB_LINEDOWN:
        return Step(scrollBar_.SmallChange());
      case SB_PAGEUP:
        return Step(-scrollBar_.LargeChange());
      case SB_PAGEDOWN:
        return Step(scrollBar_.LargeChange());
      case SB_THUMBTRACK:
      case SB_THUMBPOSITION:
        return scrollBar_.SetValue(TrackPosition());
      case SB_TOP:
        return scrollBar_.SetValue(0);
      case SB_BOTTOM:
        return scrollBar_.SetValue(scrollBar_.Max());
      default:
        return;
    }
  }

  /// The message itself has 16 bits for it.
  int TrackPosition() const {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_TRACKPOS;
    ::GetScrollInfo(Window(), SB_CTL, &info);
    return info.nTrackPos;
  }

  void Step(std::int64_t by) {
    const std::int64_t value = scrollBar_.Value() + by;
    scrollBar_.SetValue(static_cast<int>(std::clamp<std::int64_t>(value, 0, scrollBar_.Max())));
  }

  /// What is less than a step waits for the next turn.
  void Turn(double notches) {
    UINT lines = 3;
    ::SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    const double perNotch = lines == WHEEL_PAGESCROLL ? scrollBar_.LargeChange()
                                                      : lines * 1.0 * scrollBar_.SmallChange();
    turned_ -= notches * perNotch;
    const double whole = std::trunc(turned_);
    turned_ -= whole;
    Step(static_cast<std::int64_t>(whole));
  }

  ScrollBar& scrollBar_;
  double turned_ = 0;
};

}  // namespace

std::unique_ptr<WindowsPeer> MakePeer(ScrollBar& scrollBar, HWND parent, Placement placement) {
  return std::make_unique<ScrollBarPeer>(scrollBar, parent, placement);
}

}  // namespace velkor
