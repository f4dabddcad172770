// platform/windows/elements/PeerDrawing.h: backgrounds and texts of windows that are drawn here.
#pragma once

#include <string>

#include "platform/windows/system/Win32.h"

namespace velkor {

/// What a child window has behind it. The brush is its parent's.
struct PeerBackground {
  HBRUSH brush = nullptr;
  COLORREF colour = 0;
};

/// Asks the parent, as controls of the system do (WM_CTLCOLORSTATIC), which also sets the colours
/// of `dc`; a parent without an opinion has the colours of dialogs.
PeerBackground BackgroundOf(HWND child, HDC dc);

/// Room that a text takes in the font of a window, in pixels.
/// @param format  of DrawTextW
/// @param width  where lines break, with DT_WORDBREAK
SIZE TextSize(HWND window, const std::string& utf8, UINT format, int width = 0);

}  // namespace velkor
