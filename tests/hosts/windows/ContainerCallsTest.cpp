// tests/hosts/windows/ContainerCallsTest.cpp: what a container may do to a control, and when.
#include <gmock/gmock.h>

#include "platform/windows/system/MessageWindow.h"
#include "tests/hosts/windows/ContainerCase.h"
#include "tests/platform/windows/DriveDialog.h"

namespace velkor {
namespace {

using ContainerCalls = ContainerCase;

TEST_F(ContainerCalls, AHostThatProcessesNoMessagesLetsTheControlGoAtOnce) {
  {
    const auto planner = Create<IDispatch>();
    std::wstring name = L"Folder";
    LPOLESTR names = name.data();
    DISPID member = 0;
    ASSERT_EQ(planner->GetIDsOfNames(IID_NULL, &names, 1, 0, &member), S_OK);
    const Variant value("Team");
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS arguments{const_cast<VARIANT*>(&value.Get()), &put, 1, 1};
    ASSERT_EQ(planner->Invoke(member, IID_NULL, 0, DISPATCH_PROPERTYPUT, &arguments, nullptr,
                              nullptr, nullptr),
              S_OK);
  }
  EXPECT_TRUE(library_.CanUnload());
  Container().Do(OLEIVERB_UIACTIVATE);
  container_->Close();
  container_.Reset();
  EXPECT_TRUE(library_.CanUnload());
}

TEST_F(ContainerCalls, OneFactoryUnlocksWhatAnotherOneLocked) {
  const auto factory = [] {
    ComPtr<IClassFactory> made;
    EXPECT_EQ(::CoGetClassObject(Id(), CLSCTX_INPROC_SERVER, nullptr, IID_PPV_ARGS(&made)), S_OK);
    return made;
  };
  factory()->LockServer(TRUE);
  EXPECT_FALSE(library_.CanUnload());
  factory()->LockServer(FALSE);
  EXPECT_TRUE(library_.CanUnload());
}

TEST_F(ContainerCalls, TheControlMayBeLetGoWithinWhateverItTells) {
  for (const char* moment : {"OnInPlaceActivate", "ShowObject", "OnUIActivate", "SetActiveObject",
                             "OnFocus(TRUE)", "OnUIDeactivate", "OnInPlaceDeactivate"}) {
    BareContainer& container = Container();
    container.reactions[moment] = [&] { container.Drop(); };
    container.Do(OLEIVERB_UIACTIVATE);
    container.Drop();
    EXPECT_GE(container.Count(moment), 1) << moment;
    EXPECT_EQ(container.Child(), nullptr) << moment;
    EXPECT_EQ(container.Count("OnInPlaceActivate"), container.Count("OnInPlaceDeactivate"));
    EXPECT_EQ(container.Count("OnUIActivate"), container.Count("OnUIDeactivate")) << moment;
    container.Close();
    container_.Reset();
    EXPECT_TRUE(library_.CanUnload()) << moment;
  }
}

TEST_F(ContainerCalls, TheControlMayBeLetGoAsItLosesTheKeyboardWithItsUse) {
  const std::function<void(BareContainer&)> losses[] = {
      [this](BareContainer&) { Control<IOleInPlaceActiveObject>()->EnableModeless(FALSE); },
      [this](BareContainer&) { Planner(Control<IDispatch>()).Put("Enabled", Variant(false)); }};
  for (const auto& lose : losses) {
    BareContainer& container = Container();
    ASSERT_EQ(container.Do(OLEIVERB_UIACTIVATE), S_OK);
    container.reactions["OnFocus(FALSE)"] = [&] { container.Drop(); };
    lose(container);
    EXPECT_EQ(container.Count("OnFocus(FALSE)"), 1);
    EXPECT_EQ(container.Child(), nullptr);
  }
}

TEST_F(ContainerCalls, AskingForTheWindowWhileItIsMadeMakesOne) {
  BareContainer& container = Container();
  container.reactions["OnInPlaceActivate"] = [&] { container.Do(OLEIVERB_SHOW); };
  EXPECT_EQ(container.Do(OLEIVERB_SHOW), S_OK);
  EXPECT_EQ(::FindWindowExW(container.Window(), container.Child(), nullptr, nullptr), nullptr);
}

/// A window of the container's own that closes the control as it loses the keyboard.
LRESULT CALLBACK CloseOnLoss(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* const container =
      reinterpret_cast<BareContainer*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
  if (message == WM_KILLFOCUS && container != nullptr) container->Drop();
  return ::DefWindowProcW(window, message, wParam, lParam);
}

TEST_F(ContainerCalls, AClickThatTakesTheKeyboardFromAnotherWindowMayEndTheControl) {
  BareContainer& container = Container();
  ASSERT_EQ(container.Do(OLEIVERB_SHOW), S_OK);
  const HWND child = container.Child();
  const HWND holder = ::ChildWindowFromPointEx(child, {300, 200}, CWP_SKIPINVISIBLE);
  POINT inHolder{300, 200};
  ::MapWindowPoints(child, holder, &inHolder, 1);
  const HWND grid = ::ChildWindowFromPointEx(holder, inHolder, CWP_SKIPINVISIBLE);
  ASSERT_NE(grid, holder);
  const HWND other = ::CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 620, 0, 50, 20,
                                       container.Window(), nullptr, nullptr, nullptr);
  ::SetWindowLongPtrW(other, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&container));
  ::SetWindowLongPtrW(other, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(CloseOnLoss));
  ::SetFocus(other);
  ::SendMessageW(grid, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 20));
  EXPECT_FALSE(::IsWindow(child));
  EXPECT_EQ(container.control, nullptr);
}

TEST_F(ContainerCalls, WindowsThatWentWithTheContainersComeAgain) {
  BareContainer& container = Container();
  ASSERT_EQ(container.Do(OLEIVERB_UIACTIVATE), S_OK);
  ::DestroyWindow(container.Window());
  container.MakeWindow();
  ASSERT_EQ(container.Do(OLEIVERB_UIACTIVATE), S_OK);
  EXPECT_NE(container.Child(), nullptr);
  for (const char* each : {"OnInPlaceActivate", "OnUIActivate"}) {
    EXPECT_EQ(container.Count(each), 2) << each;
  }
  for (const char* each : {"OnInPlaceDeactivate", "OnUIDeactivate"}) {
    EXPECT_EQ(container.Count(each), 1) << each;
  }
}

TEST_F(ContainerCalls, HearsOfTheKeyboardOnceWhenItComesAndOnceWhenItGoes) {
  BareContainer& container = Container();
  ASSERT_EQ(container.Do(OLEIVERB_UIACTIVATE), S_OK);
  // Between windows of the control.
  ::SetFocus(::GetWindow(container.Child(), GW_CHILD));
  EXPECT_EQ(container.Count("OnFocus(TRUE)"), 1);
  EXPECT_EQ(container.Count("OnFocus(FALSE)"), 0);
  ::SetFocus(container.Window());
  EXPECT_EQ(container.Count("OnFocus(FALSE)"), 1);
}

TEST_F(ContainerCalls, AFrameThatTheControlLeftDuringADialogIsFreedAgain) {
  BareContainer& container = Container();
  ASSERT_EQ(container.Do(OLEIVERB_SHOW), S_OK);
  const MessageWindow leaver(
      [&](UINT, WPARAM) { Control<IOleInPlaceObject>()->InPlaceDeactivate(); });
  const DriveDialog drive([&] {
    const HWND message = WaitForDialog(L"OutlookVelkor");
    ::SendMessageW(leaver.Get(), WM_APP, 0, 0);
    Answer(message, IDOK);
  });
  EXPECT_TRUE(PumpUntil([&] { return container.Count("EnableModeless(TRUE)") == 1; }));
  EXPECT_EQ(container.Count("EnableModeless(FALSE)"), 1);
}

TEST_F(ContainerCalls, WhatIsLoadedBeforeItsSiteDoesNotStartInDesignMode) {
  const auto control = Create<IOleObject>();
  const ComPtr<TextBag> bag(new TextBag);
  ASSERT_EQ(As<IPersistPropertyBag>(control)->Load(bag.Get(), nullptr), S_OK);
  container_ = ComPtr<BareContainer>(new BareContainer(control, BareContainer::Designs));
  ASSERT_EQ(container_->Do(OLEIVERB_SHOW), S_OK);
  // Starting would tell that there is no calendar program.
  constexpr int LongerThanTheStart = 500;
  PumpFor(LongerThanTheStart);
  EXPECT_EQ(container_->Count("EnableModeless(FALSE)"), 0);
}

TEST_F(ContainerCalls, AControlStartsWhereNothingSaysThatItIsDesigned) {
  const BareContainer::UserMode modes[] = {nullptr, BareContainer::Uses,
                                           [](Variant&) { return DISP_E_MEMBERNOTFOUND; },
                                           [](Variant& used) {
                                             used = Variant("neither");
                                             return S_OK;
                                           }};
  for (const BareContainer::UserMode& mode : modes) {
    container_ = ComPtr<BareContainer>(new BareContainer(Create<IOleObject>(), mode));
    ASSERT_EQ(container_->Do(OLEIVERB_SHOW), S_OK);
    // It tells that there is no calendar program.
    const DriveDialog drive([] { Answer(WaitForDialog(L"OutlookVelkor"), IDOK); });
    EXPECT_TRUE(PumpUntil([&] { return container_->Count("EnableModeless(TRUE)") == 1; }));
    container_->Close();
  }
}

TEST_F(ContainerCalls, WhatTheContainerClipsIsNotSeen) {
  BareContainer& container = Container();
  const auto seen = [&] {
    RECT box{};
    const int kind = ::GetWindowRgnBox(container.Child(), &box);
    return kind == ERROR ? -1 : box.right - box.left;
  };
  container.clip = {10, 10, 110, 310};
  ASSERT_EQ(container.Do(OLEIVERB_SHOW), S_OK);
  EXPECT_EQ(seen(), 100);
  const auto object = Control<IOleInPlaceObject>();
  const RECT elsewhere{700, 10, 800, 310};
  ASSERT_EQ(object->SetObjectRects(&container.place, &elsewhere), S_OK);
  EXPECT_EQ(seen(), 0);
  ASSERT_EQ(object->SetObjectRects(&container.place, &container.place), S_OK);
  EXPECT_EQ(seen(), -1);
}

TEST_F(ContainerCalls, KeysThatTheGridDoesNotKnowAreTheContainers) {
  BareContainer& container = Container();
  ASSERT_EQ(container.Do(OLEIVERB_UIACTIVATE), S_OK);
  const auto takes = [&](WPARAM key, bool control) {
    BYTE state[256]{};
    state[VK_CONTROL] = control ? 0x80 : 0;
    ::SetKeyboardState(state);
    MSG message{::GetFocus(), WM_KEYDOWN, key, 1, 0, {}};
    const HRESULT result = Control<IOleInPlaceActiveObject>()->TranslateAccelerator(&message);
    state[VK_CONTROL] = 0;
    ::SetKeyboardState(state);
    return result == S_OK;
  };
  for (const WPARAM key : {WPARAM{VK_F1}, WPARAM{VK_F5}, WPARAM{VK_ESCAPE}}) {
    EXPECT_FALSE(takes(key, false)) << key;
  }
  EXPECT_FALSE(takes('S', true));
  for (const WPARAM key : {WPARAM{VK_DOWN}, WPARAM{VK_HOME}, WPARAM{VK_RETURN}}) {
    EXPECT_TRUE(takes(key, false)) << key;
  }
}

TEST_F(ContainerCalls, DocumentsGetAPictureOfItsSize) {
  BareContainer& container = Container();
  SIZEL size{12000, 6000};
  ASSERT_EQ(container.control->SetExtent(DVASPECT_CONTENT, &size), S_OK);
  const auto data = Control<IDataObject>();
  ComPtr<IEnumFORMATETC> formats;
  ASSERT_EQ(data->EnumFormatEtc(DATADIR_GET, &formats), S_OK);
  FORMATETC format{};
  int count = 0;
  for (; formats->Next(1, &format, nullptr) == S_OK; ++count) {
    STGMEDIUM medium{};
    ASSERT_EQ(data->GetData(&format, &medium), S_OK) << format.cfFormat;
    if (medium.tymed == TYMED_ENHMF) {
      ENHMETAHEADER header{};
      ::GetEnhMetaFileHeader(medium.hEnhMetaFile, sizeof header, &header);
      EXPECT_GT(header.nRecords, 100U);
      EXPECT_EQ(header.rclFrame.right - header.rclFrame.left, size.cx);
    } else {
      const auto* const picture =
          static_cast<const METAFILEPICT*>(::GlobalLock(medium.hMetaFilePict));
      EXPECT_EQ(picture->xExt, size.cx);
      EXPECT_GT(::GetMetaFileBitsEx(picture->hMF, 0, nullptr), 1000U);
      ::GlobalUnlock(medium.hMetaFilePict);
    }
    ::ReleaseStgMedium(&medium);
  }
  EXPECT_EQ(count, 2);
  format.cfFormat = CF_TEXT;
  EXPECT_EQ(data->QueryGetData(&format), DV_E_FORMATETC);
}

TEST_F(ContainerCalls, VerbsAreListedAndASizeIsNoChangeToStore) {
  BareContainer& container = Container();
  ComPtr<IEnumOLEVERB> verbs;
  ASSERT_EQ(container.control->EnumVerbs(&verbs), S_OK);
  OLEVERB verb{};
  ASSERT_EQ(verbs->Next(1, &verb, nullptr), S_OK);
  EXPECT_EQ(verb.lVerb, OLEIVERB_PRIMARY);
  EXPECT_STREQ(verb.lpszVerbName, L"&Show");
  ::CoTaskMemFree(verb.lpszVerbName);
  SIZEL size{5000, 3000};
  EXPECT_EQ(container.control->SetExtent(DVASPECT_CONTENT, &size), S_OK);
  EXPECT_EQ(Control<IPersistStreamInit>()->IsDirty(), S_FALSE);
}

}  // namespace
}  // namespace velkor
