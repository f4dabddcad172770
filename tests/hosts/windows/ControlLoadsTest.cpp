// tests/hosts/windows/ControlLoadsTest.cpp: controls made and let go many times over.
#include <cstdlib>

#include "tests/hosts/windows/ControlCase.h"
#include "tests/platform/windows/HeldHandles.h"

namespace velkor {
namespace {

/// Drawn without messages, which would bring the start-up.
void Draw(const AtlContainer& container) {
  ASSERT_EQ(container.Result(), S_OK);
  ::RedrawWindow(container.Window(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

/// As many as scripts/many-controls.sh asks for.
int PairsOfControls() {
  constexpr int Usual = 15;
  const char* const asked = std::getenv("VELKOR_CONTROLS");
  return asked == nullptr ? Usual : std::atoi(asked) / 2;
}

TEST(ControlLoads, ManyControlsTwoAtATimeLeaveNothingBehind) {
  const Apartment thread;
  const ControlLibrary library;
  EXPECT_EQ(library.Call("DllRegisterServer"), S_OK);
  const auto live = [] {
    const AtlContainer first;
    const AtlContainer second;
    Draw(first);
    Draw(second);
  };
  const auto settle = [] { PumpFor(20); };
  // The heap grows to its size with the first ones, and with the first look.
  for (int warm = 0; warm < 3; ++warm) live();
  static_cast<void>(HeldHandles());
  for (int warm = 0; warm < 3; ++warm) live();
  settle();
  const HeldHandles before;
  for (int left = PairsOfControls(); left > 0; --left) {
    live();
    if (left % 20 == 0) settle();
  }
  settle();
  ExpectNoMoreThan(before);
  EXPECT_TRUE(PumpUntil([&] { return library.CanUnload(); }));
  EXPECT_EQ(library.Call("DllUnregisterServer"), S_OK);
}

void ExpectUnloaded() {
  ::CoFreeUnusedLibrariesEx(0, 0);
  ASSERT_EQ(::GetModuleHandleW(L"OutlookVelkor.ocx"), nullptr) << "still loaded";
}

TEST(ControlLoads, TwentyLoadsAndUnloadsLeaveNothingBehind) {
  const Apartment thread;
  EXPECT_EQ(ControlLibrary().Call("DllRegisterServer"), S_OK);
  const auto load = [] {
    {
      const AtlContainer container;
      Draw(container);
    }
    PumpFor(20);
    ExpectUnloaded();
  };
  for (int warm = 0; warm < 3; ++warm) load();
  const HeldHandles before;
  for (int i = 0; i < 20; ++i) load();
  ExpectNoMoreThan(before);
  EXPECT_EQ(ControlLibrary().Call("DllUnregisterServer"), S_OK);
}

}  // namespace
}  // namespace velkor
