// platform/windows/dialogs/DialogPlace.h: where a dialog opens, and how large it may be.
#pragma once

#include "platform/windows/system/Win32.h"

namespace velkor {

/// What windows can take of the screen that a window is on.
RECT WorkAreaAround(HWND window);
SIZE SizeOf(const RECT& rect);
/// The size of a window whose inner area is this large.
SIZE WithFrame(HWND window, SIZE area);
/// Gives a dialog its size, in the middle of `owner`, else of the screen, and wholly on the screen
/// where it fits.
void PutInMiddle(HWND dialog, HWND owner, SIZE size);

}  // namespace velkor
