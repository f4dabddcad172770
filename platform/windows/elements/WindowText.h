// platform/windows/elements/WindowText.h: how much room text takes in a window's font.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/windows/system/Wide.h"

namespace velkor {

/// One line of text, as drawn without prefixes.
SIZE LineSize(HWND window, std::wstring_view text);
/// Room that a text takes, in pixels.
/// @param format  of DrawTextW
/// @param width  where lines break, with DT_WORDBREAK
SIZE TextSize(HWND window, const std::wstring& text, UINT format, int width = 0);
/// Width of the longest of several lines.
int WidestLine(HWND window, const std::vector<std::wstring>& lines);
TEXTMETRICW MetricsOfFont(HWND window);
/// Pixels of a size in dialog units: quarters of a letter's usual width in the window's font, and
/// eighths of a line ("About Dialog Box Templates").
SIZE DialogUnits(HWND window, SIZE units);
/// A caption for a window that takes "&" for the mark of a key.
std::wstring ToCaption(std::string_view utf8);

}  // namespace velkor
