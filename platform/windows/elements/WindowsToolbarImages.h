// platform/windows/elements/WindowsToolbarImages.h: the pictures of toolbar buttons in a list.
#pragma once

#include <memory>
#include <type_traits>

#include "platform/windows/system/Win32.h"
// After windows.h.
#include <commctrl.h>

namespace velkor {

struct DestroyImageList {
  void operator()(HIMAGELIST list) const { ::ImageList_Destroy(list); }
};
using ImageListHandle = std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, DestroyImageList>;

/// Draws the pictures of toolbar_images; picture n is image n - 1 of the list, in the middle of its
/// height.
/// @param side  of each picture, in pixels, above 0; the images are as wide
/// @param height  of the images, at least that
/// @param back  what the edges blend into; also what is left free
/// @param faded  for buttons that cannot be pressed
/// @return null when the system cannot make it
ImageListHandle MakeToolbarImages(int side, int height, COLORREF lines, COLORREF back, bool faded);

}  // namespace velkor
