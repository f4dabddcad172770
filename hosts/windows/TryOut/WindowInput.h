// hosts/windows/TryOut/WindowInput.h: clicks and keys for the windows of the control, as messages.
#pragma once

#include <string>

#include "platform/windows/system/Win32.h"

namespace velkor {

enum class MouseButton { Left, Right };

/// Posts a click to the window that the user would hit at a point: the innermost visible one.
/// Throws Error for a point outside, or on a disabled window.
/// @param point  in pixels of `window`
void PostClick(HWND window, POINT point, MouseButton button);

/// Posts a move of the pointer there.
void PostMove(HWND window, POINT point);

/// Posts a key to the window that has the keyboard, else to `window`.
/// @param virtualKey  VK_LEFT, VK_RETURN... or a letter's capital
void PostKey(HWND window, WPARAM virtualKey);

/// Posts characters to the window that has the keyboard. Throws Error when none has.
void PostText(const std::string& text);

/// Posts what the toolbar below `window` tells when a button is clicked. Throws Error when there is
/// no toolbar, or no enabled button in that place.
/// @param place  counted from 0
void PostToolbarButton(HWND window, int place);

}  // namespace velkor
