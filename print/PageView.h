// print/PageView.h: where a page stands in the viewport of the preview.
#pragma once

#include <algorithm>

#include "values/Twips.h"

namespace velkor {

/// Free room on each side of a page on show.
inline constexpr Twips PageViewMargin = 300;

/// The largest place for a whole page in the viewport, less the margins: it fills one direction and
/// is centred in the other. Without area where the viewport has no room.
inline Rect FittedPage(Extent page, Extent viewport) {
  const Twips width = viewport.width - 2 * PageViewMargin;
  const Twips height = viewport.height - 2 * PageViewMargin;
  if (width <= 0 || height <= 0 || page.width <= 0 || page.height <= 0) return {};
  const double scale = std::min(width / page.width, height / page.height);
  const Extent size{page.width * scale, page.height * scale};
  const Twips left = (width - size.width) / 2 + PageViewMargin;
  const Twips top = (height - size.height) / 2 + PageViewMargin;
  return {left, top, left + size.width, top + size.height};
}

/// A page in its own size, with the margins around it: the range that is scrolled through.
inline Extent ScrolledRange(Extent page) {
  return {page.width + 2 * PageViewMargin, page.height + 2 * PageViewMargin};
}

}  // namespace velkor
