// tests/platform/windows/HeldHandles.h: what a process holds of the system, to be compared.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "platform/windows/drawing/GdiHandles.h"

namespace velkor {

/// Handles as the system counts them. Where it does not count those of windows and drawings (Wine),
/// their highest numbers tell: new ones take the free numbers first.
struct HeldHandles {
  HeldHandles() {
    ::GetProcessHandleCount(::GetCurrentProcess(), &kernel);
    user = ::GetGuiResources(::GetCurrentProcess(), GR_USEROBJECTS);
    gdi = ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS);
    // More than there are free numbers below the highest.
    std::vector<BitmapHandle> bitmaps(3000);
    for (BitmapHandle& made : bitmaps) {
      made.reset(::CreateBitmap(1, 1, 1, 1, nullptr));
      highestBitmap = std::max(highestBitmap, reinterpret_cast<DWORD_PTR>(made.get()) & 0xFFFF);
    }
    std::vector<HMENU> menus(500);
    for (HMENU& made : menus) {
      made = ::CreateMenu();
      highestMenu = std::max(highestMenu, reinterpret_cast<DWORD_PTR>(made) & 0xFFFF);
    }
    for (const HMENU made : menus) ::DestroyMenu(made);
  }

  DWORD kernel = 0;
  DWORD user = 0;
  DWORD gdi = 0;
  DWORD_PTR highestBitmap = 0;
  /// Menus and windows are numbered alike, those of other programs too.
  DWORD_PTR highestMenu = 0;
};

/// Expects that nothing is held that was not held before.
inline void ExpectNoMoreThan(const HeldHandles& before) {
  const HeldHandles now;
  EXPECT_LE(now.kernel, before.kernel);
  EXPECT_LE(now.user, before.user);
  EXPECT_LE(now.gdi, before.gdi);
  EXPECT_LE(now.highestBitmap, before.highestBitmap + 2);
  EXPECT_LE(now.highestMenu, before.highestMenu + 10) << "other programs take of these as well";
}

}  // namespace velkor
