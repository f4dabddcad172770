// platform/windows/drawing/ScreenUnits.h: lengths, and the font of dialogs, at the resolution of
// the screen.
#pragma once

#include "platform/windows/drawing/GdiHandles.h"
#include "values/Twips.h"

namespace velkor {

/// Twips to a pixel of the screen as this process sees it (GetDeviceCaps, LOGPIXELSX): 15 at 96
/// dots to the inch.
PixelSize ScreenPixel();
/// Whole pixels of an element's bounds.
PixelRect ToScreenPixels(const Rect& bounds);
/// Twips of a point, or of a size, in pixels, and the other way.
Point ToTwips(POINT pixels);
Extent ToTwips(SIZE pixels);
POINT ToScreenPixels(Point position);
/// A length of 96 to the inch in pixels of the screen.
int ScreenLength(int pixelsAt96);

/// The font of dialogs. Whoever makes the outermost window owns one and answers WM_GETFONT with it:
/// children ask their parent.
FontHandle MakeDialogFont();
/// A font as a window has it, so many times as high, and bold.
/// @return null where the window has none
FontHandle MakeHeadingFont(HFONT ordinary, double scale);

}  // namespace velkor
