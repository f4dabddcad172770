// control/Picture.h: the control drawn without its windows.
#pragma once

#include "values/Twips.h"

namespace velkor {

class Surface;
struct YearPlanElements;

/// Draws every visible element as it is laid out, with its top left corner at the surface's origin.
/// Scroll bars and what is being typed are left out.
/// @param size  of the control's layout
void DrawControl(Surface& surface, YearPlanElements& elements, Extent size);

}  // namespace velkor
