// platform/windows/elements/PaintedWindow.h: the class of windows that are drawn here.
#pragma once

namespace velkor {

/// Class of windows that do nothing by themselves, but keep the font that they are given; it is
/// registered when asked for.
const wchar_t* PaintedWindowClass();

/// Ends the class; for a library that is unloaded, when none of its windows is left.
void UnregisterPaintedWindowClass();

}  // namespace velkor
