// platform/windows/elements/WindowText.h: how much room text takes in a window's font.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/windows/system/Win32.h"

namespace velkor {

/// A length of 96 to the inch in pixels of the screen.
int ScreenLength(int pixelsAt96);
/// One line of text, as drawn without prefixes.
SIZE LineSize(HWND window, std::wstring_view text);
/// Width of the longest of several lines.
int WidestLine(HWND window, const std::vector<std::wstring>& lines);
TEXTMETRICW MetricsOfFont(HWND window);
/// A caption for a window that takes "&" for the mark of a key.
std::wstring ToCaption(std::string_view utf8);

}  // namespace velkor
