// platform/windows/drawing/ShrunkPicture.h: a picture made smaller, in which each of its pixels has
// a share.
#pragma once

namespace velkor {

class DibSection;

/// Fills `to`, which is at most as wide and as high as `from`. Thin lines become pale, but stay:
/// StretchBlt leaves out pixels, on some systems in HALFTONE mode too.
void Shrink(const DibSection& from, DibSection& to);

}  // namespace velkor
