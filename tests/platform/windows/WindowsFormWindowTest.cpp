// tests/platform/windows/WindowsFormWindowTest.cpp: forms that place their elements, as a user
// sizes and closes them.
#include "platform/windows/dialogs/WindowsFormWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/windows/dialogs/WindowsForms.h"
#include "platform/windows/dialogs/WindowsMessageBoxes.h"
#include "tests/platform/PageForm.h"
#include "tests/platform/windows/OwnerWindow.h"
#include "tests/platform/windows/UserSteps.h"
#include "values/Error.h"

namespace velkor {
namespace {

using testing::ElementsAre;

class WindowsFormWindowTest : public testing::Test {
 protected:
  OwnerWindow owner_;
  WindowsForms forms_{owner_.owner};
};

void ResizeArea(HWND window, int wider) {
  RECT place{};
  ::GetWindowRect(window, &place);
  ::MoveWindow(window, place.left, place.top, place.right - place.left + wider,
               place.bottom - place.top, TRUE);
}

TEST_F(WindowsFormWindowTest, APlacedFormHearsEachOfItsSizesOnceAndItsKeys) {
  PageForm form;
  const UserSteps steps(L"A page",
                        {[&](HWND window) {
                           EXPECT_THAT(form.widths, ElementsAre(9000));
                           EXPECT_EQ(::GetParent(WindowOf(form.pic1)), WindowOf(form.picParent));
                           EXPECT_EQ(::GetFocus(), WindowOf(form.pic1));
                           for (const WPARAM key : {VK_RETURN, VK_NEXT}) PostKey(::GetFocus(), key);
                           ::PostMessageW(window, WM_COMMAND, IDOK, 0);
                           ResizeArea(window, 50);
                           ResizeArea(window, 50);
                         },
                         [&](HWND window) {
                           EXPECT_THAT(form.widths, ElementsAre(9000, 10500));
                           EXPECT_THAT(form.keys, ElementsAre(Key::Enter, Key::PageDown));
                           ::ShowWindow(window, SW_MINIMIZE);
                           ::ShowWindow(window, SW_RESTORE);
                         },
                         [&](HWND) {
                           EXPECT_EQ(form.widths.size(), 2U);
                           PostKey(::GetFocus(), VK_ESCAPE);
                         }});
  forms_.ShowModal(form);
  EXPECT_FALSE(form.IsOpen());
  EXPECT_EQ(form.presses, 0);
}

TEST_F(WindowsFormWindowTest, APlacedFormShowsMessagesWhileItIsArrangedAndMayUnloadItself) {
  PageForm form;
  form.onResize = [&] {
    if (form.widths.size() > 1) return form.Unload();
    const UserSteps box(L"No page", {[&](HWND message) {
                                       const HWND window = ::GetWindow(message, GW_OWNER);
                                       EXPECT_EQ(WindowText(window), L"A page");
                                       ResizeArea(window, 50);
                                     },
                                     [&](HWND message) {
                                       EXPECT_EQ(form.widths.size(), 1U)
                                           << "arranged while it is arranged";
                                       ::PostMessageW(message, WM_COMMAND, IDOK, 0);
                                     }});
    WindowsMessageBoxes(owner_.owner).Show({.text = "No room", .title = "No page"});
  };
  forms_.ShowModal(form);
  EXPECT_THAT(form.widths, ElementsAre(9000, 9750));
  EXPECT_FALSE(form.pic1.Peer());
}

TEST_F(WindowsFormWindowTest, APlacedFormFitsTheScreenAndStaysLargeEnoughToUse) {
  for (const Extent wanted : {Extent{1e9, 1e9}, Extent{0, 0}}) {
    PageForm form(wanted);
    const UserSteps steps(L"A page", {[&](HWND window) {
                            RECT place{};
                            RECT screen{};
                            ::GetWindowRect(window, &place);
                            ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &screen, 0);
                            RECT seen{};
                            ::IntersectRect(&seen, &place, &screen);
                            EXPECT_TRUE(::EqualRect(&seen, &place));
                            EXPECT_GE(place.right - place.left, 300);
                            ::PostMessageW(window, WM_CLOSE, 0, 0);
                          }});
    forms_.ShowModal(form);
  }
}

TEST_F(WindowsFormWindowTest, RefusesElementsThatItCannotShow) {
  for (const bool held : {false, true}) {
    UnplaceableForm form(held);
    EXPECT_THROW(forms_.ShowModal(form), Error);
    EXPECT_FALSE(form.IsOpen() || form.lblText.Peer() || form.onUnload);
    EXPECT_TRUE(::IsWindowEnabled(owner_.window));
  }
}

}  // namespace
}  // namespace velkor
