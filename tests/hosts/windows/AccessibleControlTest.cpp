// tests/hosts/windows/AccessibleControlTest.cpp: nodes that a screen reader holds, and controls
// that go meanwhile.
#include <atomic>
#include <cstdlib>
#include <thread>

#include "tests/hosts/windows/AccessibleObject.h"
#include "tests/hosts/windows/BareContainer.h"
// After windows.h.
#include <commctrl.h>

namespace velkor {
namespace {

/// Set when a thread is through with its apartment.
struct FlagAtEnd {
  std::atomic<bool>& flag;
  ~FlagAtEnd() { flag = true; }
};

class AccessibleControl : public ControlCase {
 protected:
  static ComPtr<BareContainer> Show() {
    ComPtr<IOleObject> made;
    CLSID id{};
    ::CLSIDFromProgID(L"OutlookVelkor.YearPlan", &id);
    ::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&made));
    ComPtr<BareContainer> container(new BareContainer(made, BareContainer::Designs));
    EXPECT_EQ(container->Do(OLEIVERB_SHOW), S_OK);
    return container;
  }
  /// Whatever it is asked it answers that it is gone.
  static void ExpectGone(const AccessibleObject& node) {
    BSTR text = nullptr;
    LONG number = 0;
    ULONG fetched = 0;
    VARIANT value{};
    ComPtr<IDispatch> object;
    HWND window = nullptr;
    ComPtr<IOleWindow> place;
    ComPtr<IEnumVARIANT> children;
    EXPECT_EQ(node->QueryInterface(IID_PPV_ARGS(&place)), S_OK);
    EXPECT_EQ(node->QueryInterface(IID_PPV_ARGS(&children)), S_OK);
    for (const HRESULT answer :
         {node->get_accName(node.Self(), &text), node->get_accDescription(node.Self(), &text),
          node->get_accRole(node.Self(), &value), node->get_accState(ChildId(-77), &value),
          node->get_accChildCount(&number), node->get_accChild(ChildId(1), &object),
          node->get_accParent(&object), node->get_accFocus(&value), node->get_accSelection(&value),
          node->accLocation(&number, &number, &number, &number, node.Self()),
          node->accHitTest(0, 0, &value), node->accNavigate(NAVDIR_FIRSTCHILD, node.Self(), &value),
          node->accSelect(SELFLAG_TAKEFOCUS, node.Self()), node->accDoDefaultAction(node.Self()),
          place->GetWindow(&window), children->Next(1, &value, &fetched), children->Skip(1)}) {
      EXPECT_EQ(answer, CO_E_OBJNOTCONNECTED);
    }
  }
};

TEST_F(AccessibleControl, NodesHeldBeyondTheWindowsAreNotConnectedAndKeepOnlyTheLibrary) {
  const ComPtr<BareContainer> container = Show();
  AccessibleObject control = AccessibleObject::Of(container->Child());
  AccessibleObject day = control.Child(ROLE_SYSTEM_TABLE).Children()[1].Children()[2];
  EXPECT_NE(day.Name(), "");
  container->Close();
  ExpectGone(control);
  ExpectGone(day);
  EXPECT_FALSE(library_.CanUnload()) << "its code is still called";
  control = day = AccessibleObject();
  EXPECT_TRUE(PumpUntil([this] { return library_.CanUnload(); }));
}

TEST_F(AccessibleControl, ItsWindowsAnswerForTheirClientAreaAloneAndNodesStandInOneAnother) {
  const ComPtr<BareContainer> container = Show();
  for (const LONG other :
       {OBJID_WINDOW, OBJID_CARET, OBJID_VSCROLL, OBJID_NATIVEOM, LONG{1}, LONG{-25}}) {
    EXPECT_EQ(::SendMessageW(container->Child(), WM_GETOBJECT, 0, other), 0) << other;
  }
  const AccessibleObject control = AccessibleObject::Of(container->Child());
  ComPtr<IDispatch> parent;
  EXPECT_EQ(control->get_accParent(&parent), S_OK);
  EXPECT_NE(parent, nullptr);
  const AccessibleObject table = AccessibleObject::Of(control.Child(ROLE_SYSTEM_TABLE).Window());
  const AccessibleObject may = table.Children()[4];
  const auto step = [&](LONG direction, LONG child) {
    VARIANT end{};
    if (may->accNavigate(direction, ChildId(child), &end) != S_OK) return std::string();
    ComPtr<IAccessible> node;
    end.pdispVal->QueryInterface(IID_PPV_ARGS(&node));
    ::VariantClear(&end);
    return AccessibleObject(node).Name();
  };
  const auto days = may.Children();
  EXPECT_EQ(step(NAVDIR_NEXT, CHILDID_SELF), table.Children()[5].Name());
  EXPECT_EQ(step(NAVDIR_UP, CHILDID_SELF), table.Children()[3].Name());
  EXPECT_EQ(step(NAVDIR_LEFT, CHILDID_SELF), "");
  EXPECT_EQ(step(NAVDIR_RIGHT, 1), days[1].Name());
  EXPECT_EQ(step(NAVDIR_LASTCHILD, CHILDID_SELF), days.back().Name());
  EXPECT_EQ(step(NAVDIR_NEXT, 31), "");
  EXPECT_EQ(step(NAVDIR_NEXT, 99), "");
  const PixelRect place = days[5].Place();
  VARIANT found{};
  EXPECT_EQ(table->accHitTest(place.left + 1, place.top + 1, &found), S_OK);
  EXPECT_EQ(found.vt, VT_DISPATCH);
  DISPPARAMS none{};
  VARIANT count{};
  EXPECT_EQ(found.pdispVal->Invoke(DISPID_ACC_CHILDCOUNT, IID_NULL, LOCALE_USER_DEFAULT,
                                   DISPATCH_PROPERTYGET, &none, &count, nullptr, nullptr),
            S_OK);
  EXPECT_EQ(count.lVal, 0);
  ::VariantClear(&found);
  container->Close();
}

TEST_F(AccessibleControl, ButtonsAreSaidToBeWhereTheToolbarHasThem) {
  const ComPtr<BareContainer> container = Show();
  const AccessibleObject toolbar =
      AccessibleObject::Of(container->Child()).Child(ROLE_SYSTEM_TOOLBAR);
  const auto buttons = toolbar.Children();
  ASSERT_EQ(buttons.size(), 6U);
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    RECT place{};
    ::SendMessageW(toolbar.Window(), TB_GETITEMRECT, i, reinterpret_cast<LPARAM>(&place));
    ::MapWindowPoints(toolbar.Window(), nullptr, reinterpret_cast<POINT*>(&place), 2);
    const PixelRect said = buttons[i].Place();
    EXPECT_EQ(said.left, place.left) << i;
    EXPECT_EQ(said.right, place.right) << i;
    EXPECT_LE(std::abs(said.top - place.top) + std::abs(said.bottom - place.bottom), 2) << i;
    EXPECT_EQ(buttons[i].State() & STATE_SYSTEM_UNAVAILABLE, STATE_SYSTEM_UNAVAILABLE);
    EXPECT_EQ(buttons[i]->accDoDefaultAction(buttons[i].Self()), DISP_E_MEMBERNOTFOUND);
  }
  container->Close();
}

TEST_F(AccessibleControl, NothingIsDoneBelowADialogThatIsOpen) {
  const ComPtr<BareContainer> container = Show();
  const AccessibleObject day =
      AccessibleObject::Of(container->Child()).Child(ROLE_SYSTEM_TABLE).ChildAt(3).ChildAt(2);
  for (const bool open : {false, true}) {
    ::EnableWindow(container->Window(), !open);
    EXPECT_EQ(day->accDoDefaultAction(day.Self()), open ? S_FALSE : S_OK);
    EXPECT_EQ(day->accSelect(SELFLAG_TAKESELECTION, day.Self()), open ? S_FALSE : S_OK);
  }
  container->Close();
}

TEST_F(AccessibleControl, AContainerMayLetTheControlGoWhenAReaderMovesTheKeyboard) {
  for (const char* when : {"OnUIActivate", "OnFocus(TRUE)", "SetActiveObject"}) {
    const ComPtr<BareContainer> container = Show();
    const AccessibleObject table =
        AccessibleObject::Of(container->Child()).Child(ROLE_SYSTEM_TABLE);
    container->reactions[when] = [&] { container->Drop(); };
    table->accSelect(SELFLAG_TAKEFOCUS, table.Self());
    EXPECT_EQ(container->Count(when), 1) << when;
    ExpectGone(table);
    container->Close();
  }
}

TEST_F(AccessibleControl, AReaderThatAsksOnAndOnSurvivesControlsThatComeAndGo) {
  std::atomic<HWND> window = nullptr;
  std::atomic<bool> ends = false;
  std::atomic<int> read = 0;
  std::atomic<bool> ended = false;
  std::thread reader([&] {
    const FlagAtEnd flag{ended};
    const Apartment apartment;
    while (!ends) {
      const AccessibleObject control = AccessibleObject::Of(window);
      for (const AccessibleObject& child : control.Children()) read += !child.Name().empty();
    }
  });
  for (int i = 0; i < 10; ++i) {
    const ComPtr<BareContainer> container = Show();
    window = container->Child();
    const int before = read;
    PumpUntil([&] { return read > before + i % 7; }, 2000);
    container->Close();
  }
  ends = true;
  window = nullptr;
  EXPECT_TRUE(PumpUntil([&] { return ended.load(); }));
  reader.join();
  EXPECT_GT(read, 20);
}

}  // namespace
}  // namespace velkor
