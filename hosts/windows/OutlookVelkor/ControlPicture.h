// hosts/windows/OutlookVelkor/ControlPicture.h: draws the control without its windows.
#pragma once

#include "platform/windows/system/Win32.h"
#include "values/Twips.h"

namespace velkor {

struct YearPlanElements;

/// Draws the control as it is laid out into a rectangle of a device context, scaled to it. What
/// `dc` holds is as before afterwards.
/// @param size  of the control's layout; above 0
/// @param bounds  in the logical units of `dc`
void DrawControl(YearPlanElements& elements, Extent size, HDC dc, const RECTL& bounds);

/// Draws a picture of the control, recorded before, in the same way.
void DrawPicture(HENHMETAFILE picture, Extent size, HDC dc, const RECTL& bounds);

}  // namespace velkor
