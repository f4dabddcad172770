// hosts/windows/OutlookVelkor/Himetric.h: the unit in which containers give sizes.
#pragma once

#include "platform/windows/system/Win32.h"
#include "values/Twips.h"

namespace velkor {

/// Sizes of embedded objects count hundredths of a millimetre (MM_HIMETRIC).
inline constexpr double HimetricPerTwip = 2540.0 / 1440;

inline Extent ToTwipsOfHimetric(SIZEL size) {
  return {size.cx / HimetricPerTwip, size.cy / HimetricPerTwip};
}

inline SIZEL ToHimetric(Extent size) {
  return {static_cast<LONG>(size.width * HimetricPerTwip),
          static_cast<LONG>(size.height * HimetricPerTwip)};
}

}  // namespace velkor
