// tests/platform/windows/DensitySteps.h: a user who changes monitors and the system's text size.
#pragma once

#include "platform/windows/system/WindowDensity.h"

namespace velkor {

/// Tells a top-level window what the system does when it comes to a monitor of another density.
inline void MoveToMonitor(HWND window, UINT dots) {
  RECT place{};
  ::GetWindowRect(window, &place);
  const auto before = static_cast<int>(DotsPerInch(window));
  const auto after = static_cast<int>(dots);
  place.right = place.left + ::MulDiv(place.right - place.left, after, before);
  place.bottom = place.top + ::MulDiv(place.bottom - place.top, after, before);
  ::SendMessageW(window, WM_DPICHANGED, MAKEWPARAM(dots, dots), reinterpret_cast<LPARAM>(&place));
}

/// The system's font for messages in other sizes, until its end.
class MessageFontSize {
 public:
  MessageFontSize() {
    before_.cbSize = size_;
    ::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, size_, &before_, 0);
  }
  ~MessageFontSize() { Write(before_); }
  MessageFontSize(const MessageFontSize&) = delete;
  MessageFontSize& operator=(const MessageFontSize&) = delete;

  /// @param told  window that hears of it
  void Set(int points, HWND told = nullptr) {
    NONCLIENTMETRICSW metrics = before_;
    metrics.lfMessageFont.lfHeight = -::MulDiv(points, static_cast<int>(DotsPerInch(nullptr)), 72);
    Write(metrics);
    if (told != nullptr) ::SendMessageW(told, WM_SETTINGCHANGE, SPI_SETNONCLIENTMETRICS, 0);
  }

 private:
  void Write(NONCLIENTMETRICSW& metrics) const {
    ::SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, size_, &metrics, 0);
  }

  static constexpr UINT size_ = sizeof(NONCLIENTMETRICSW);
  NONCLIENTMETRICSW before_{};
};

}  // namespace velkor
