// tests/platform/windows/HeldHandles.h: what a process holds of the system, to be compared.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "platform/windows/drawing/GdiHandles.h"
#include "platform/windows/system/ProcessWatch.h"
// After windows.h.
#include <psapi.h>

namespace velkor {

/// Handles as the system counts them, and memory. Where it counts none (Wine answers 0), their
/// highest numbers tell: new ones take the free numbers first.
struct HeldHandles {
  HeldHandles() {
    ::GetProcessHandleCount(::GetCurrentProcess(), &kernel);
    user = ::GetGuiResources(::GetCurrentProcess(), GR_USEROBJECTS);
    gdi = ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS);
    // More of each than there are free numbers below the highest.
    highestKernel = Highest<KernelHandle>(
        1000, [] { return KernelHandle(::CreateEventW(nullptr, FALSE, FALSE, nullptr)); });
    highestBitmap = Highest<BitmapHandle>(
        6000, [] { return BitmapHandle(::CreateBitmap(1, 1, 1, 1, nullptr)); });
    highestMenu = Highest<Menu>(500, [] { return Menu(::CreateMenu()); });
    // The last, as the heap keeps the room that these took.
    PROCESS_MEMORY_COUNTERS counters{};
    ::GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof counters);
    memory = counters.PagefileUsage;
  }

  DWORD kernel = 0;
  DWORD user = 0;
  DWORD gdi = 0;
  /// Of the process's own, in bytes.
  SIZE_T memory = 0;
  /// In fours.
  DWORD_PTR highestKernel = 0;
  DWORD_PTR highestBitmap = 0;
  /// Menus and windows are numbered alike, those of other programs too.
  DWORD_PTR highestMenu = 0;

 private:
  struct DestroyMenu {
    void operator()(HMENU menu) const { ::DestroyMenu(menu); }
  };
  using Menu = std::unique_ptr<std::remove_pointer_t<HMENU>, DestroyMenu>;

  template <typename Handle, typename Make>
  static DWORD_PTR Highest(std::size_t count, const Make& make) {
    std::vector<Handle> all(count);
    DWORD_PTR highest = 0;
    for (Handle& each : all) {
      each = make();
      highest = std::max(highest, reinterpret_cast<DWORD_PTR>(each.get()) & 0xFFFF);
    }
    return highest;
  }
};

/// Names what is held that was not held before; empty for nothing. A few more of
/// each may be the system's own, of menus and windows also other programs'.
/// @param memorySlack  in bytes, what more memory counts as nothing
inline std::string GrowthSince(const HeldHandles& before, SIZE_T memorySlack = 2 << 20) {
  const HeldHandles now;
  std::string grown;
  const auto compare = [&](const char* name, auto held, auto slack) {
    const auto most = before.*held + slack;
    if (now.*held <= most) return;
    grown += std::string(name) + " " + std::to_string(before.*held) + " to " +
             std::to_string(now.*held) + "; ";
  };
  compare("kernel handles", &HeldHandles::kernel, 2);
  compare("user objects", &HeldHandles::user, 0);
  compare("drawing objects", &HeldHandles::gdi, 0);
  compare("memory", &HeldHandles::memory, memorySlack);
  compare("highest kernel handle", &HeldHandles::highestKernel, 2 * 4);
  compare("highest bitmap", &HeldHandles::highestBitmap, 8);
  compare("highest menu", &HeldHandles::highestMenu, 10);
  return grown;
}

/// Expects that nothing is held that was not held before.
inline void ExpectNoMoreThan(const HeldHandles& before, SIZE_T memorySlack = 2 << 20) {
  EXPECT_EQ(GrowthSince(before, memorySlack), "");
}

}  // namespace velkor
