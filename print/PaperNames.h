// print/PaperNames.h: what paper sizes and orientations are called.
#pragma once

#include <string_view>

namespace velkor {

/// The name of a device mode's paper size (DEVMODEA structure, dmPaperSize); empty for a code
/// without a name.
std::string_view PaperName(int paperSize);

/// "Portrait" for 1, "Landscape" for 2 (DEVMODEA structure, dmOrientation), else empty.
std::string_view OrientationName(int orientation);

}  // namespace velkor
