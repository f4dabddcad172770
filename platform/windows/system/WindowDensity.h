// platform/windows/system/WindowDensity.h: asks the system how dense the pixels of a window are,
// and for what follows from it; older versions of the system know less.
#pragma once

#include "platform/windows/system/Win32.h"

namespace velkor {

/// Dots to the inch at which a window's lengths count: what its window, or one around it, was told
/// (KeepDotsPerInch), else what the system says (GetDpiForWindow, Windows 10), else the screen's.
/// Changes with the monitor in a program that takes care of that itself.
/// @param window  null for the screen
UINT DotsPerInch(HWND window);
/// Keeps what WM_DPICHANGED told a top-level window: Windows 8.1 tells it nowhere else. 0 forgets
/// it, as every window must at its end.
void KeepDotsPerInch(HWND window, UINT dots);

/// GetSystemMetrics at a density.
int SystemMetric(int index, UINT dots);
/// The system's font for messages, as the user set it, at a density.
LOGFONTW MessageFont(UINT dots);
/// Outer size of a window whose inner one is this.
RECT AroundArea(RECT area, DWORD style, DWORD extendedStyle, UINT dots);
/// Has the system leave a dialog's fonts and items alone when its density changes.
void KeepDialogUnscaled(HWND dialog);

/// What this thread makes and asks for counts as a window does, which its program may have made for
/// another density awareness than its own. Changes nothing of the window's.
class AwarenessScope {
 public:
  /// @param window  null for none: then this does nothing
  explicit AwarenessScope(HWND window);
  ~AwarenessScope();
  AwarenessScope(const AwarenessScope&) = delete;
  AwarenessScope& operator=(const AwarenessScope&) = delete;

 private:
  DPI_AWARENESS_CONTEXT before_ = nullptr;
};

}  // namespace velkor
