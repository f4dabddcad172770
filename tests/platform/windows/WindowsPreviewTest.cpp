// tests/platform/windows/WindowsPreviewTest.cpp: the print preview as a user zooms, scrolls and
// closes it.
#include <gtest/gtest.h>

#include "platform/headless/HeadlessSeams.h"
#include "platform/windows/dialogs/WindowsForms.h"
#include "platform/windows/drawing/WindowsPrinter.h"
#include "platform/windows/elements/WindowsScrollBars.h"
#include "print/frmPrint.h"
#include "tests/model/RefreshDoubles.h"
#include "tests/platform/windows/OwnerWindow.h"
#include "tests/platform/windows/TestPrinter.h"
#include "tests/platform/windows/UserSteps.h"
#include "tests/view/SampleGrid.h"
// After windows.h.
#include <commctrl.h>

namespace velkor {
namespace {

/// Everything real but what the year comes from.
struct Preview {
  Platform On() {
    const Platform all = seams.On(outlook);
    return {all.cacheUtilities, all.clock,  all.dialogs,  all.environment, all.files, forms,
            all.inputs,         all.locale, all.messages, all.outlook,     printer,   all.progress,
            all.registry,       scrollBars, all.settings, all.shell};
  }

  TestPrinter device{"Preview Printer"};
  OwnerWindow container;
  HeadlessSeams seams;
  NoOutlook outlook;
  WindowsForms forms{container.owner};
  WindowsPrinter printer{container.owner};
  WindowsScrollBars scrollBars;
  YearGrid grid = SampleGrid({SampleEvent("a", At(2006, 1, 3), At(2006, 2, 9), "Holiday")});
  Platform platform = On();
  frmPrint form{grid, {}, {.titleName = "Team", .displaySubject = true}, platform};
};

/// Its place in the toolbar.
constexpr WPARAM PageSetupButton = 2;

bool IsDark(COLORREF colour) {
  return GetRValue(colour) + GetGValue(colour) + GetBValue(colour) < 3 * 128;
}

/// Dark pixels of the middle of a window, as it is shown.
int DarkPixels(HWND window) {
  RECT area{};
  ::GetClientRect(window, &area);
  const HDC dc = ::GetDC(window);
  int dark = 0;
  for (LONG x = area.right / 4; x < area.right * 3 / 4; x += 3) {
    for (LONG y = area.bottom / 4; y < area.bottom * 3 / 4; y += 3) {
      dark += IsDark(::GetPixel(dc, x, y));
    }
  }
  ::ReleaseDC(window, dc);
  return dark;
}

TEST(WindowsPreview, ShowsThePageZoomsItAndOpensTheOptionsOverItself) {
  Preview preview;
  frmPrint& form = preview.form;
  ASSERT_TRUE(form.Load());
  const auto hasBars = [&] {
    return (::GetWindowLongW(WindowOf(form.picParent), GWL_STYLE) & WS_VSCROLL) != 0;
  };
  const UserSteps steps(
      L"Print preview",
      {[](HWND) {},
       [&](HWND window) {
         EXPECT_EQ(form.txtStatus.Caption().substr(0, 11), "Page 1 of 1");
         EXPECT_EQ(WindowText(WindowOf(form.txtStatus)).substr(0, 11), L"Page 1 of 1");
         EXPECT_GT(DarkPixels(WindowOf(form.pic1)), 0);
         RECT area{};
         ::GetClientRect(window, &area);
         EXPECT_GE(PlaceOf(WindowOf(form.picParent)).right, area.right - 1);
         EXPECT_EQ(::GetFocus(), WindowOf(form.pic1));
         EXPECT_FALSE(hasBars());
         form.tbPreview.ClickButton(preview_keys::Zoom);
       },
       [&](HWND) {
         EXPECT_TRUE(hasBars());
         EXPECT_EQ(::GetScrollPos(WindowOf(form.picParent), SB_VERT), 0);
         PostKey(::GetFocus(), VK_DOWN);
       },
       [&](HWND) {
         EXPECT_GT(::GetScrollPos(WindowOf(form.picParent), SB_VERT), 0);
         EXPECT_LT(PlaceOf(WindowOf(form.pic1)).top, 0);
         RECT button{};
         const HWND bar = WindowOf(form.tbPreview);
         ::SendMessageW(bar, TB_GETITEMRECT, PageSetupButton, reinterpret_cast<LPARAM>(&button));
         PostClick(bar, {button.left + 5, button.top + 5});
       },
       [&](HWND window) {
         const HWND options = ::FindWindowW(nullptr, L"Print Options");
         EXPECT_EQ(::GetWindow(options, GW_OWNER), window);
         EXPECT_FALSE(::IsWindowEnabled(window));
         PostKey(::GetFocus(), VK_ESCAPE);
       },
       [&](HWND window) {
         EXPECT_EQ(::GetActiveWindow(), window);
         EXPECT_EQ(::GetFocus(), WindowOf(form.pic1));
         PostKey(::GetFocus(), VK_ESCAPE);
       }});
  preview.forms.ShowModal(form);
  EXPECT_FALSE(form.IsOpen() || form.pic1.Peer());
}

}  // namespace
}  // namespace velkor
