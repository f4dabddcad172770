// tests/platform/windows/HeldHandlesTest.cpp: a leak of each kind is seen.
#include "tests/platform/windows/HeldHandles.h"

#include <gmock/gmock.h>

#include <functional>
#include <utility>

namespace velkor {
namespace {

using testing::HasSubstr;

TEST(HeldHandles, ALeakOfEachKindIsSeen) {
  constexpr int Leaked = 30;
  // Where the system counts, its numbers tell nothing.
  const bool counts = HeldHandles().gdi > 0;
  std::vector<KernelHandle> events;
  std::vector<BitmapHandle> bitmaps;
  std::vector<HMENU> menus;
  std::vector<std::vector<char>> blocks;
  const std::pair<const char*, std::function<void()>> leaks[] = {
      {"kernel handle",
       [&] { events.emplace_back(::CreateEventW(nullptr, FALSE, FALSE, nullptr)); }},
      {counts ? "drawing objects" : "highest bitmap",
       [&] { bitmaps.emplace_back(::CreateBitmap(1, 1, 1, 1, nullptr)); }},
      {counts ? "user objects" : "highest menu", [&] { menus.push_back(::CreateMenu()); }},
      {"memory", [&] { blocks.emplace_back(256 * 1024, 'x'); }}};
  for (const auto& [named, leak] : leaks) {
    const HeldHandles before;
    EXPECT_EQ(GrowthSince(before), "") << named;
    for (int i = 0; i < Leaked; ++i) leak();
    EXPECT_THAT(GrowthSince(before), HasSubstr(named));
  }
  for (const HMENU menu : menus) ::DestroyMenu(menu);
}

}  // namespace
}  // namespace velkor
