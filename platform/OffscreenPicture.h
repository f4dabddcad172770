// platform/OffscreenPicture.h: a picture in memory that is drawn once and shown in any size.
#pragma once

#include "values/Twips.h"

namespace velkor {

class Surface;

/// White until it is drawn on.
class OffscreenPicture {
 public:
  virtual ~OffscreenPicture() = default;
  /// Valid for as long as the picture lives.
  virtual Surface& Drawing() = 0;
  /// Copies all of it into a rectangle of a surface of the same face, scaled smoothly.
  virtual void CopyTo(Surface& surface, const Rect& rect) = 0;
};

}  // namespace velkor
