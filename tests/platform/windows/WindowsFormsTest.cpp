// tests/platform/windows/WindowsFormsTest.cpp: forms as a user fills in and closes them.
#include "platform/windows/dialogs/WindowsForms.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "categories/dlgFilter.h"
#include "control/frmAbout.h"
#include "exchange/dlgSaveType.h"
#include "platform/headless/FixedLocale.h"
#include "platform/headless/MemorySettings.h"
#include "platform/headless/ScriptedMessageBoxes.h"
#include "platform/headless/ScriptedShell.h"
#include "platform/windows/dialogs/WindowsInputBox.h"
#include "print/PrintOptions.h"
#include "print/frmPrintOptions.h"
#include "span/CategoryFilter.h"
#include "tests/platform/windows/DensitySteps.h"
#include "tests/platform/windows/HeldHandles.h"
#include "tests/platform/windows/OwnerWindow.h"
#include "tests/platform/windows/UserSteps.h"

namespace velkor {
namespace {

using testing::ElementsAre;

class WindowsFormsTest : public testing::Test {
 protected:
  static SIZE SizeOfWindow(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    return {place.right - place.left, place.bottom - place.top};
  }

  /// Everything that shows text is large enough for it, inside the dialog unless that scrolls, and
  /// covers nothing else.
  static void ExpectWellLaidOut(const Form& form, HWND dialog) {
    RECT area{};
    ::GetClientRect(dialog, &area);
    const bool scrolls = (::GetWindowLongW(dialog, GWL_STYLE) & WS_VSCROLL) != 0;
    std::vector<RECT> places;
    for (const FormRow& row : form.Rows()) {
      for (const FormCell& cell : row.cells) {
        auto& peer = dynamic_cast<WindowsPeer&>(*cell.element->Peer());
        const RECT place = PlaceOf(peer.Window());
        const SIZE needed = peer.NeededSize(place.right - place.left);
        EXPECT_GE(place.right - place.left, needed.cx) << cell.element->Name();
        const bool isList = dynamic_cast<CheckListBox*>(cell.element) != nullptr;
        EXPECT_TRUE(isList || place.bottom - place.top >= needed.cy) << cell.element->Name();
        RECT common{};
        const bool inside = ::IntersectRect(&common, &place, &area) && ::EqualRect(&common, &place);
        EXPECT_TRUE(scrolls || inside) << cell.element->Name();
        for (const RECT& other : places) {
          EXPECT_FALSE(::IntersectRect(&common, &place, &other)) << cell.element->Name();
        }
        places.push_back(place);
      }
    }
  }

  OwnerWindow owner_;
  WindowsForms forms_{owner_.owner};
  MemorySettings settings_;
  FixedLocale locale_;
  ScriptedMessageBoxes messages_{[](const std::string& failure) { FAIL() << failure; }};
  ScriptedShell shell_;
};

TEST_F(WindowsFormsTest, FilterIsChosenByKeysAndTheListTakesTheHeight) {
  CategoryFilter filter;
  filter.SetCategoryFilter("Travel");
  dlgFilter form(
      filter, "Team", [] { return std::vector<std::string>{"Master"}; }, settings_, locale_,
      messages_);
  form.VelkorLegends = {"Holiday", "Travel", "Work"};
  form.Load();
  const HWND button = ::CreateWindowW(L"BUTTON", L"", WS_CHILD | WS_VISIBLE, 0, 0, 50, 20,
                                      owner_.window, nullptr, nullptr, nullptr);
  ::SetFocus(button);
  int listHeight = 0;
  const UserSteps steps(
      L"Category Filter",
      {[&](HWND dialog) {
         ExpectWellLaidOut(form, dialog);
         EXPECT_FALSE(::IsWindowEnabled(owner_.window));
         EXPECT_EQ(::GetFocus(), WindowOf(form.lbCategories));
         EXPECT_EQ(::GetWindow(WindowOf(form.tbFilter), GW_HWNDPREV), WindowOf(form.Label1));
         PostKey(::GetFocus(), VK_SPACE);
         PostKey(::GetFocus(), VK_TAB);
       },
       [&](HWND dialog) {
         EXPECT_EQ(form.FilterText(), "Travel, Holiday");
         EXPECT_EQ(::GetFocus(), WindowOf(form.tbFilter));
         PostText(::GetFocus(), L"Work");
         PostClick(WindowOf(form.cbMasterList));
         const RECT place = PlaceOf(WindowOf(form.lbCategories));
         listHeight = static_cast<int>(place.bottom - place.top);
         RECT window{};
         ::GetWindowRect(dialog, &window);
         ::MoveWindow(dialog, window.left, window.top, window.right - window.left + 90,
                      window.bottom - window.top + 100, TRUE);
       },
       [&](HWND dialog) {
         ExpectWellLaidOut(form, dialog);
         const RECT place = PlaceOf(WindowOf(form.lbCategories));
         EXPECT_EQ(place.bottom - place.top, listHeight + 100);
         EXPECT_EQ(form.lbCategories.Items().size(), 4U);
         ::MoveWindow(dialog, 0, 0, 1, 1, TRUE);
       },
       [&](HWND dialog) {
         ExpectWellLaidOut(form, dialog);
         PostKey(WindowOf(form.tbFilter), VK_RETURN);
       }});
  forms_.ShowModal(form);
  EXPECT_TRUE(form.OKPressed());
  EXPECT_EQ(form.FilterText(), "Work");
  EXPECT_TRUE(::IsWindowEnabled(owner_.window));
  EXPECT_EQ(::GetActiveWindow(), owner_.window);
  EXPECT_EQ(::GetFocus(), button);
  EXPECT_THAT(owner_.modal, ElementsAre(true, false));
  EXPECT_FALSE(form.lbCategories.Peer());
}

TEST_F(WindowsFormsTest, ExportIsAskedForWithTheChosenOptionFirst) {
  dlgSaveType form;
  form.SelectedYear = 2026;
  form.Load();
  const UserSteps steps(L"Export", {[&](HWND dialog) {
                                      ExpectWellLaidOut(form, dialog);
                                      EXPECT_EQ(::GetFocus(), WindowOf(form.rbCatsAndAppts));
                                      EXPECT_EQ(PlaceOf(WindowOf(form.tbFrom)).left,
                                                PlaceOf(WindowOf(form.tbTo)).left);
                                      PostKey(::GetFocus(), VK_TAB);
                                    },
                                    [&](HWND dialog) {
                                      EXPECT_EQ(::GetFocus(), WindowOf(form.tbFrom));
                                      PostText(::GetFocus(), L"1");
                                      PostKey(::GetFocus(), VK_RETURN);
                                      PostMessageW(dialog, WM_COMMAND, IDOK, 0);
                                    },
                                    [&](HWND dialog) {
                                      EXPECT_FALSE(::IsWindowEnabled(WindowOf(form.OKButton)));
                                      EXPECT_TRUE(::IsWindow(dialog) && form.IsOpen());
                                      PostText(WindowOf(form.tbFrom), L"/2/2025");
                                    },
                                    [&](HWND) { PostKey(WindowOf(form.tbFrom), VK_RETURN); }});
  forms_.ShowModal(form);
  ASSERT_TRUE(form.OKPressed);
  EXPECT_EQ(form.DateFrom, Date::FromFields({2025, 2, 1}));
}

TEST_F(WindowsFormsTest, PrintOptionsStandInFramesAndLeaveTheStateThatCallsLeave) {
  PrintOptions options(settings_, {.titleName = "Team", .firstMonth = 4});
  frmPrintOptions form(options, messages_, shell_);
  form.Load();
  const UserSteps steps(L"Print Options",
                        {[&](HWND dialog) {
                           ExpectWellLaidOut(form, dialog);
                           EXPECT_EQ(::GetFocus(), WindowOf(form.txtMLeft));
                           EXPECT_EQ(PlaceOf(WindowOf(form.txtMRight)).left,
                                     PlaceOf(WindowOf(form.txtMBottom)).left);
                           const HWND frame = ::GetWindow(WindowOf(form.lblMLeft), GW_HWNDPREV);
                           EXPECT_EQ(WindowText(frame), L"Margins");
                           const RECT around = PlaceOf(frame);
                           const RECT first = PlaceOf(WindowOf(form.lblMLeft));
                           const RECT last = PlaceOf(WindowOf(form.txtMBottom));
                           EXPECT_TRUE(around.top < first.top && around.left < first.left &&
                                       around.bottom > last.bottom && around.right > last.right);
                           PostClick(WindowOf(form.optInch));
                         },
                         [&](HWND) {
                           EXPECT_EQ(WindowText(WindowOf(form.txtMLeft)), L"0.8");
                           ::SendMessageW(WindowOf(form.txtMLeft), EM_SETSEL, 0, -1);
                           PostText(WindowOf(form.txtMLeft), L"a1.5");
                           PostKey(WindowOf(form.cmbStart), VK_DOWN);
                           PostKey(WindowOf(form.txtMLeft), VK_RETURN);
                         }});
  forms_.ShowModal(form);
  EXPECT_TRUE(form.OKPressed);
  EXPECT_EQ(shell_.beeps, 1);
  EXPECT_EQ(options.FilterStartMonth(), 5);
  EXPECT_EQ(settings_.Get("Year Planner", "Printing", "Left Margin", ""), "2160");
}

struct AskingForm : Form {
  explicit AskingForm(std::string title = "Asking") : Form("frmAsk", std::move(title)) {
    cmdOK.SetCaption("OK");
    AddRow({{{&tbText, 1}}});
    AddRow({{{&cmdOK, 1}}, FormRowKind::Buttons});
    cmdOK.onClick = [this] {
      ++accepted;
      Unload();
    };
  }
  TextBox tbText{"tbText"};
  CommandButton cmdOK{"cmdOK"};
  int accepted = 0;
};

TEST_F(WindowsFormsTest, FormsOpenOverOneAnotherAndKeysThatAreNotKeptStayWithTheBox) {
  AskingForm inner("Inner");
  AskingForm form;
  form.tbText.onKeyPress = [](int code) { return code > ' '; };
  form.cmdOK.onClick = [&] {
    forms_.ShowModal(inner);
    EXPECT_TRUE(form.IsOpen());
  };
  const auto isEnabled = [](const wchar_t* title) {
    return ::IsWindowEnabled(::FindWindowW(nullptr, title)) != FALSE;
  };
  const UserSteps steps(L"Asking", {[&](HWND) {
                                      PostKey(WindowOf(form.tbText), VK_RETURN);
                                      PostKey(WindowOf(form.tbText), VK_ESCAPE);
                                    },
                                    [&](HWND) {
                                      EXPECT_TRUE(form.IsOpen() && !inner.IsOpen());
                                      PostClick(WindowOf(form.cmdOK));
                                    },
                                    [&](HWND dialog) {
                                      EXPECT_TRUE(isEnabled(L"Inner") && !isEnabled(L"Asking"));
                                      const HWND over = ::FindWindowW(nullptr, L"Inner");
                                      EXPECT_EQ(::GetWindow(over, GW_OWNER), dialog);
                                      PostKey(WindowOf(inner.tbText), VK_ESCAPE);
                                    },
                                    [&](HWND dialog) {
                                      EXPECT_EQ(::GetActiveWindow(), dialog);
                                      ::PostMessageW(dialog, WM_CLOSE, 0, 0);
                                    }});
  forms_.ShowModal(form);
  EXPECT_FALSE(form.IsOpen() || isEnabled(L"Asking"));
}

TEST_F(WindowsFormsTest, EndsWithTheProgramWithItsOwnerAndByACallFromElsewhere) {
  const std::vector<std::function<void(Form&)>> ends{
      [](Form&) { ::PostQuitMessage(7); },
      [](Form& form) { form.Unload(); },
      [&](Form&) { ::DestroyWindow(owner_.window); },
  };
  for (std::size_t i = 0; i < ends.size(); ++i) {
    AskingForm form;
    const UserSteps steps(L"Asking", {[&](HWND) { ends[i](form); }});
    forms_.ShowModal(form);
    EXPECT_FALSE(form.IsOpen() || form.tbText.Peer());
    EXPECT_EQ(TakeQuit(), i == 0);
    EXPECT_EQ(::FindWindowW(nullptr, L"Asking"), nullptr);
  }
  EXPECT_FALSE(owner_.owner.IsBusy());
}

TEST_F(WindowsFormsTest, EveryDialogShowsItsTextsWholeAtEachDensityAndTextSize) {
  CategoryFilter filter;
  dlgFilter choose(
      filter, "Team", [] { return std::vector<std::string>{}; }, settings_, locale_, messages_);
  choose.Load();
  dlgSaveType save;
  save.Load();
  PrintOptions options(settings_, {.titleName = "Team", .firstMonth = 4});
  frmPrintOptions print(options, messages_, shell_);
  print.Load();
  frmAbout about(shell_);
  MessageFontSize font;
  for (Form* form : std::initializer_list<Form*>{&choose, &save, &print, &about}) {
    font.Set(9);
    const UserSteps steps(ToWide(form->Title()), {[&](HWND dialog) {
                            const SIZE first = SizeOfWindow(dialog);
                            for (const UINT dots : {144u, 192u, 96u}) {
                              MoveToMonitor(dialog, dots);
                              ExpectWellLaidOut(*form, dialog);
                            }
                            for (const int points : {18, 12}) {
                              font.Set(points, dialog);
                              ExpectWellLaidOut(*form, dialog);
                            }
                            EXPECT_GT(SizeOfWindow(dialog).cx, first.cx);
                            const auto moveAround = [&] {
                              for (int i = 0; i < 5; ++i) {
                                for (const UINT dots : {192u, 96u}) MoveToMonitor(dialog, dots);
                              }
                            };
                            // The system keeps what it drew of each font, as it sees fit.
                            constexpr SIZE_T DrawnLetters = 8 << 20;
                            moveAround();
                            const HeldHandles before;
                            moveAround();
                            ExpectNoMoreThan(before, DrawnLetters);
                            ::PostMessageW(dialog, WM_CLOSE, 0, 0);
                          }});
    forms_.ShowModal(*form);
  }
}

TEST_F(WindowsFormsTest, AQuestionKeepsItsShapeAtEachDensity) {
  MessageFontSize font;
  const UserSteps steps(L"Rename", {[&](HWND dialog) {
                          const SIZE first = SizeOfWindow(dialog);
                          for (const UINT dots : {144u, 192u}) {
                            MoveToMonitor(dialog, dots);
                            const SIZE size = SizeOfWindow(dialog);
                            const double times = dots / 96.0;
                            EXPECT_NEAR(size.cx, first.cx * times, first.cx * 0.12);
                            EXPECT_NEAR(size.cy, first.cy * times, first.cy * 0.25);
                            const RECT ok = PlaceOf(::GetDlgItem(dialog, IDOK));
                            const RECT cancel = PlaceOf(::GetDlgItem(dialog, IDCANCEL));
                            EXPECT_LT(ok.right, cancel.left);
                          }
                          const RECT cancel = PlaceOf(::GetDlgItem(dialog, IDCANCEL));
                          font.Set(18, dialog);
                          EXPECT_GT(PlaceOf(::GetDlgItem(dialog, IDCANCEL)).right, cancel.right);
                          ::PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
                        }});
  EXPECT_EQ(WindowsInputBoxes(owner_.owner).Ask("A new name for the category:", "Rename"), "");
}

struct TallForm : Form {
  TallForm() : Form("frmTall", "Tall") {
    for (int i = 0; i < 60; ++i) {
      boxes.push_back(std::make_unique<TextBox>("tb" + std::to_string(i)));
      AddRow({{{boxes.back().get(), 1}}});
    }
  }
  std::vector<std::unique_ptr<TextBox>> boxes;
};

TEST_F(WindowsFormsTest, ADialogHigherThanTheScreenScrollsToWhatHasTheKeyboard) {
  TallForm form;
  const auto isSeen = [](const Element& element, HWND dialog) {
    RECT area{};
    ::GetClientRect(dialog, &area);
    const RECT place = PlaceOf(WindowOf(element));
    return place.top >= 0 && place.bottom <= area.bottom && place.right <= area.right;
  };
  const UserSteps steps(L"Tall", {[&](HWND dialog) {
                                    EXPECT_TRUE(isSeen(*form.boxes.front(), dialog));
                                    EXPECT_FALSE(isSeen(*form.boxes.back(), dialog));
                                    form.boxes.back()->SetFocus();
                                  },
                                  [&](HWND dialog) {
                                    EXPECT_TRUE(isSeen(*form.boxes.back(), dialog));
                                    MoveToMonitor(dialog, 192);
                                    form.boxes.front()->SetFocus();
                                  },
                                  [&](HWND dialog) {
                                    EXPECT_TRUE(isSeen(*form.boxes.front(), dialog));
                                    for (int i = 0; i < 3; ++i) {
                                      ::SendMessageW(dialog, WM_VSCROLL, SB_PAGEDOWN, 0);
                                    }
                                    EXPECT_FALSE(isSeen(*form.boxes.front(), dialog));
                                    ::PostMessageW(dialog, WM_CLOSE, 0, 0);
                                  }});
  forms_.ShowModal(form);
}

TEST_F(WindowsFormsTest, AboutBoxOpensThePageAndKeepsNoHandles) {
  const auto open = [&] {
    frmAbout form(shell_);
    const UserSteps steps(L"About OutlookVelkor YearPlan", {[&](HWND dialog) {
                            ExpectWellLaidOut(form, dialog);
                            for (const UINT dots : {192u, 96u}) MoveToMonitor(dialog, dots);
                            PostClick(WindowOf(form.imgLogo));
                            PostKey(::GetFocus(), VK_RETURN);
                          }});
    forms_.ShowModal(form);
  };
  open();
  const HeldHandles before;
  for (int i = 0; i < 10; ++i) open();
  ExpectNoMoreThan(before);
  EXPECT_EQ(shell_.pages.size(), 11U);
}

}  // namespace
}  // namespace velkor
