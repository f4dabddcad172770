// platform/windows/elements/WindowsToolbarImages.h: the pictures of toolbar buttons.
#pragma once

#include <memory>
#include <type_traits>

#include "platform/windows/system/Win32.h"
#include "values/Twips.h"
// After windows.h.
#include <commctrl.h>

namespace velkor {

/// Of a toolbar's button; a lower toolbar has smaller ones.
inline constexpr Twips ToolbarButtonSide = 480;
/// Around a picture on each side.
inline constexpr Twips ToolbarImageMargin = 90;

struct DestroyImageList {
  void operator()(HIMAGELIST list) const { ::ImageList_Destroy(list); }
};
using ImageListHandle = std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, DestroyImageList>;

/// Draws the pictures of toolbar_images as lines; picture n is image n - 1 of the list.
/// @param side  of each, in pixels, above 0
/// @param back  what the edges blend into; also what is left free
/// @return null when the system cannot make it
ImageListHandle MakeToolbarImages(int side, COLORREF lines, COLORREF back);

/// The colour of a button that cannot be pressed.
COLORREF FadedLines(COLORREF lines, COLORREF back);

}  // namespace velkor
