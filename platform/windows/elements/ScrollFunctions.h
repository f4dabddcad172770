// platform/windows/elements/ScrollFunctions.h: the system's functions on a window's scroll bars,
// usual and flat.
#pragma once

#include <optional>

#include "platform/windows/system/Win32.h"

namespace velkor {

/// One of the two sets, with the same meaning of each function.
struct ScrollFunctions {
  decltype(&::SetScrollInfo) setInfo = nullptr;
  decltype(&::GetScrollInfo) getInfo = nullptr;
  decltype(&::SetScrollPos) setPosition = nullptr;
  decltype(&::GetScrollPos) getPosition = nullptr;
  decltype(&::GetScrollRange) getRange = nullptr;
  decltype(&::EnableScrollBar) enable = nullptr;
  decltype(&::ShowScrollBar) show = nullptr;
};

ScrollFunctions UsualScrollFunctions();

/// Those of the common controls (comctl32.dll), which work on a window between the two calls.
class FlatScrollFunctions {
 public:
  /// None where the library lacks one of them.
  static std::optional<FlatScrollFunctions> Find();

  const ScrollFunctions& Functions() const { return functions_; }
  /// False where the window cannot have flat bars.
  bool Begin(HWND window) const;
  void End(HWND window) const;

 private:
  ScrollFunctions functions_;
  BOOL(WINAPI* initialize_)(HWND) = nullptr;
  HRESULT(WINAPI* uninitialize_)(HWND) = nullptr;
  BOOL(WINAPI* setProperty_)(HWND, UINT, INT_PTR, BOOL) = nullptr;
};

}  // namespace velkor
