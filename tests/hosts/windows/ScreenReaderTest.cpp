// tests/hosts/windows/ScreenReaderTest.cpp: a screen reader, in a process of its own, reads a year
// in a form.
#include "categories/ColourList.h"
#include "control/ControlLayout.h"
#include "model/CacheFile.h"
#include "platform/windows/drawing/Density.h"
#include "platform/windows/system/WindowsLocale.h"
#include "platform/windows/system/WindowsSystem.h"
#include "tests/hosts/windows/AccessibleObject.h"
#include "tests/hosts/windows/ScriptCase.h"
#include "view/GridGeometry.h"
#include "view/Scrolling.h"
#include "view/YearGrid.h"

namespace velkor {
namespace {

using testing::HasSubstr;
using testing::SizeIs;

/// What the system told of the windows of other programs.
class HeardEvents {
 public:
  struct Event {
    DWORD event;
    HWND window;
    LONG child;
  };

  HeardEvents() {
    heard_.clear();
    hook_ = ::SetWinEventHook(EVENT_OBJECT_REORDER, EVENT_OBJECT_NAMECHANGE, nullptr, Hear, 0, 0,
                              WINEVENT_OUTOFCONTEXT | WINEVENT_SKIPOWNPROCESS);
  }
  ~HeardEvents() { ::UnhookWinEvent(hook_); }
  HeardEvents(const HeardEvents&) = delete;
  HeardEvents& operator=(const HeardEvents&) = delete;

  /// Waits for an event of a window's own objects, and answers the name of what it is about.
  static std::string Await(DWORD event, HWND window) {
    std::string name;
    PumpUntil(
        [&] {
          for (const Event& each : heard_) {
            if (each.event != event || each.window != window) continue;
            ComPtr<IAccessible> object;
            VARIANT child{};
            if (::AccessibleObjectFromEvent(window, static_cast<DWORD>(OBJID_CLIENT),
                                            static_cast<DWORD>(each.child), &object,
                                            &child) != S_OK) {
              continue;
            }
            name = AccessibleObject(object, child.lVal).Name();
          }
          return !name.empty();
        },
        5000);
    heard_.clear();
    return name;
  }

 private:
  static void CALLBACK Hear(HWINEVENTHOOK, DWORD event, HWND window, LONG object, LONG child, DWORD,
                            DWORD) {
    if (object == OBJID_CLIENT) heard_.push_back({event, window, child});
  }

  // The system calls a function without any data of ours.
  static inline std::vector<Event> heard_;
  HWINEVENTHOOK hook_ = nullptr;
};

/// @param found  an HWND, which becomes the control's; the search ends with it
BOOL CALLBACK LookAt(HWND window, LPARAM found) {
  wchar_t name[20] = L"";
  ::GetClassNameW(window, name, 20);
  if (name != std::wstring_view(L"VelkorPainted") || TextOfWindow(window) != L"YearPlan") {
    return TRUE;
  }
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

BOOL CALLBACK LookInWindow(HWND window, LPARAM found) {
  ::EnumChildWindows(window, LookAt, found);
  return *reinterpret_cast<HWND*>(found) == nullptr;
}

class ScreenReader : public ScriptCase {
 protected:
  /// The window of the control that is on show; null for none.
  static HWND FindControl() {
    HWND found = nullptr;
    ::EnumWindows(LookInWindow, reinterpret_cast<LPARAM>(&found));
    return found;
  }
  /// Calls `read` once, with the control, when the year is there; the form ends after it.
  void WhileItIsOnShow(const std::function<void(const AccessibleObject& control)>& read) {
    standIn_.Testing().Call("AddMany", {Variant(ThisYear()), Variant(std::int32_t{120})});
    bool isRead = false;
    const ScriptRun run = RunScript("Reader", [&] {
      if (isRead || !std::filesystem::exists(folder_ / L"ready")) return;
      isRead = true;
      const AccessibleObject control = AccessibleObject::Of(FindControl());
      EXPECT_NE(control.Get(), nullptr);
      if (control.Get() != nullptr) read(control);
      WindowsFiles().OpenForWriting(Path("done"));
    });
    EXPECT_EQ(run.code, 0U) << run.output;
    EXPECT_TRUE(isRead);
  }
  static std::int32_t ThisYear() { return WindowsClock().Now().Fields().year; }
  /// The year as it is computed from the cache file alone.
  YearGrid GridOfCache(HWND control) {
    YearGrid grid({ThisYear(), 1}, CategoryTable(DefaultCategories()), CategoryFilter(),
                  {.AllEvents = true});
    WindowsFiles files;
    WindowsLocale locale;
    EventCollection events;
    for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
      if (entry.path().extension() != L".tmp") continue;
      EXPECT_EQ(
          CacheFile(files, locale).Load(ToUtf8(entry.path().wstring()), grid.Fields(), events),
          LoadOutcome::Loaded);
    }
    grid.SetEvents(std::move(events));
    RECT area{};
    ::GetClientRect(control, &area);
    const Rect parent = DivideControl(DensityOf(control).ToTwips(SIZE{area.right, area.bottom}),
                                      StripKind::Commands)
                            .grid;
    grid.Resize({parent.Width(), parent.Height()}, ScrollBarWidth, DensityOf(control).Pixel());
    return grid;
  }
};

TEST_F(ScreenReader, ReadsEveryBarWithItsTextAndRectangleAndAllAroundThem) {
  WhileItIsOnShow([this](const AccessibleObject& control) {
    EXPECT_EQ(control.Name(), "Year planner");
    const AccessibleObject table = control.Child(ROLE_SYSTEM_TABLE);
    const std::vector<AccessibleObject> children = table.Children();
    const YearGrid grid = GridOfCache(control.Window());
    const std::vector<Bar>& bars = grid.Layout().bars;
    ASSERT_GE(bars.size(), 120U);
    ASSERT_THAT(children, SizeIs(MonthRows + bars.size()));
    RECT pic1{};
    ::GetWindowRect(table.Window(), &pic1);
    for (std::size_t i = 0; i < bars.size(); ++i) {
      const AccessibleObject& bar = children[MonthRows + i];
      PixelRect drawn =
          ToPixels(BarRect(bars[i], grid.Geometry(), grid.Layout()), grid.Geometry().pixel);
      drawn = {drawn.left + pic1.left, drawn.top + pic1.top, drawn.right + pic1.left,
               drawn.bottom + pic1.top};
      EXPECT_EQ(bar.Name(), grid.Events()[bars[i].event].Subject);
      EXPECT_EQ(bar.Place(), drawn) << bar.Name();
      EXPECT_EQ(bar.Role(), ROLE_SYSTEM_LISTITEM);
    }
    EXPECT_THAT(children[MonthRows].Description(), HasSubstr(std::to_string(ThisYear())));
    LONG days = 0;
    for (int row = 0; row < MonthRows; ++row) {
      const AccessibleObject& month = children[static_cast<std::size_t>(row)];
      EXPECT_EQ(month.Role(), ROLE_SYSTEM_ROW);
      EXPECT_THAT(month.Name(), HasSubstr(std::to_string(ThisYear())));
      LONG count = 0;
      month->get_accChildCount(&count);
      days += count;
    }
    EXPECT_GE(days, 365);
    EXPECT_THAT(control.Child(ROLE_SYSTEM_LIST).Children(), SizeIs(DefaultCategories().size()));
    const auto buttons = control.Child(ROLE_SYSTEM_TOOLBAR).Children();
    ASSERT_THAT(buttons, SizeIs(6));
    EXPECT_EQ(buttons[1].Name(), "Next year");
    EXPECT_EQ(buttons[1].Action(), "Press");
    const HWND toolbar = control.Child(ROLE_SYSTEM_TOOLBAR).Window();
    EXPECT_EQ(AccessibleObject::Of(toolbar).Name(), "Commands");
    const AccessibleObject edit = control.Child(ROLE_SYSTEM_TEXT);
    EXPECT_EQ(AccessibleObject::Of(edit.Window()).Name(), "Name of the category");
    EXPECT_EQ(edit.State() & STATE_SYSTEM_INVISIBLE, STATE_SYSTEM_INVISIBLE);
    EXPECT_EQ(control.Child(ROLE_SYSTEM_PUSHBUTTON).Name(), "Force refresh of current year");
  });
}

TEST_F(ScreenReader, HearsOfFocusSelectionNamesAndOtherYearsAndPressesButtons) {
  std::vector<AccessibleObject> kept;
  WhileItIsOnShow([&kept](const AccessibleObject& control) {
    const HeardEvents events;
    const AccessibleObject table = control.Child(ROLE_SYSTEM_TABLE);
    const HWND grid = table.Window();
    const AccessibleObject day = table.ChildAt(4).ChildAt(8);
    EXPECT_EQ(day->accSelect(SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION, day.Self()), S_OK);
    EXPECT_EQ(events.Await(EVENT_OBJECT_FOCUS, grid), day.Name());
    EXPECT_EQ(day.State() & (STATE_SYSTEM_FOCUSED | STATE_SYSTEM_SELECTED),
              STATE_SYSTEM_FOCUSED | STATE_SYSTEM_SELECTED);
    EXPECT_EQ(table.Focus().Name(), day.Name());
    ::PostMessageW(grid, WM_KEYDOWN, VK_RIGHT, 0);
    EXPECT_EQ(events.Await(EVENT_OBJECT_FOCUS, grid), table.ChildAt(4).ChildAt(9).Name());

    const AccessibleObject list = control.Child(ROLE_SYSTEM_LIST);
    const AccessibleObject category = list.ChildAt(3);
    EXPECT_EQ(category->accDoDefaultAction(category.Self()), S_OK);
    EXPECT_EQ(events.Await(EVENT_OBJECT_SELECTION, list.Window()), category.Name());

    const AccessibleObject bar = table.ChildAt(MonthRows);
    const AccessibleObject next = control.Child(ROLE_SYSTEM_TOOLBAR).ChildAt(1);
    const AccessibleObject year = control.Child(ROLE_SYSTEM_STATICTEXT);
    EXPECT_EQ(next->accDoDefaultAction(next.Self()), S_OK);
    EXPECT_EQ(events.Await(EVENT_OBJECT_NAMECHANGE, year.Window()),
              "Year " + std::to_string(ThisYear() + 1));
    BSTR name = nullptr;
    EXPECT_EQ(bar->get_accName(bar.Self(), &name), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(day->get_accName(day.Self(), &name), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(table.Name(), "Year");
    // It asks on while years come and go.
    for (int i = 0; i < 3; ++i) {
      next->accDoDefaultAction(next.Self());
      for (const AccessibleObject& child : table.Children()) kept.push_back(child);
    }
    kept.push_back(table);
  });
  for (const AccessibleObject& node : kept) {
    LONG count = 0;
    EXPECT_TRUE(FAILED(node->get_accChildCount(&count))) << "the form has ended";
  }
}

}  // namespace
}  // namespace velkor
