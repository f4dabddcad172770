// tests/hosts/windows/ContainerHabitsTest.cpp: the control follows what containers are used to.
#include <gmock/gmock.h>

#include "platform/windows/elements/WindowText.h"
#include "tests/hosts/windows/ContainerCase.h"

namespace velkor {
namespace {

/// Shift is down for as long as it lives.
class ShiftScope {
 public:
  explicit ShiftScope(bool down) { Press(down); }
  ~ShiftScope() { Press(false); }
  ShiftScope(const ShiftScope&) = delete;
  ShiftScope& operator=(const ShiftScope&) = delete;

 private:
  static void Press(bool down) {
    BYTE state[256]{};
    state[VK_SHIFT] = down ? 0x80 : 0;
    ::SetKeyboardState(state);
  }
};

class ContainerHabits : public ContainerCase {
 protected:
  /// What a screen reader says of the window with the keyboard.
  static std::string Focused() { return ToUtf8(TextOfWindow(::GetFocus())); }
  MSG Tab() const { return {::GetFocus(), WM_KEYDOWN, VK_TAB, 1, 0, {}}; }
};

TEST_F(ContainerHabits, TabGoesThroughTheElementsAndThenBackToTheContainer) {
  BareContainer& container = Container();
  ASSERT_EQ(container.Do(OLEIVERB_SHOW), S_OK);
  const auto active = Control<IOleInPlaceActiveObject>();
  for (const bool backward : {false, true}) {
    const ShiftScope shift(backward);
    ::SetFocus(container.Window());
    MSG entry = Tab();
    ASSERT_EQ(container.control->DoVerb(OLEIVERB_UIACTIVATE, &entry, &container, 0,
                                        container.Window(), &container.place),
              S_OK);
    std::vector<std::string> stops{Focused()};
    for (MSG key = Tab(); active->TranslateAccelerator(&key) == S_OK; key = Tab()) {
      stops.push_back(Focused());
      ASSERT_LT(stops.size(), 10U);
    }
    if (backward) std::reverse(stops.begin(), stops.end());
    EXPECT_THAT(stops, testing::ElementsAre("Commands", testing::HasSubstr("Year"), "Categories"));
  }
}

TEST_F(ContainerHabits, TabGoesThroughAControlInADialogThatHandlesItself) {
  BareContainer& container = Container();
  ASSERT_EQ(container.Do(OLEIVERB_SHOW), S_OK);
  const HWND button = ::CreateWindowExW(0, L"BUTTON", L"Other", WS_CHILD | WS_VISIBLE | WS_TABSTOP,
                                        0, 0, 9, 9, container.Window(), nullptr, nullptr, nullptr);
  for (const bool backward : {false, true}) {
    const ShiftScope shift(backward);
    ::SetFocus(button);
    std::vector<std::string> stops;
    do {
      MSG key = Tab();
      ASSERT_TRUE(::IsDialogMessageW(container.Window(), &key));
      stops.push_back(Focused());
    } while (stops.back() != "Other" && stops.size() < 10);
    stops.pop_back();
    if (backward) std::reverse(stops.begin(), stops.end());
    EXPECT_THAT(stops, testing::ElementsAre("Commands", testing::HasSubstr("Year"), "Categories"));
  }
}

}  // namespace
}  // namespace velkor
