// tests/hosts/windows/OutlookVelkorTest.cpp: the control in containers, where there is no calendar
// program.
#include <gmock/gmock.h>

#include <set>
#include <vector>

#include "hosts/windows/OutlookVelkor/ObjectSafety.h"
#include "platform/windows/drawing/DibSection.h"
#include "platform/windows/elements/WindowText.h"
#include "platform/windows/system/MessageWindow.h"
#include "platform/windows/system/WindowDensity.h"
#include "platform/windows/system/WindowsRegistry.h"
#include "tests/hosts/windows/ControlCase.h"
#include "tests/platform/windows/DriveDialog.h"
#include "tests/platform/windows/HeldHandles.h"
// After windows.h.
#include <commctrl.h>
#include <shlwapi.h>

namespace velkor {
namespace {

class OutlookVelkor : public ControlCase {
 protected:
  AutomationObject NewPlanner() { return Planner(Create<IDispatch>()); }
  template <typename Interface>
  static ComPtr<Interface> As(const AutomationObject& planner) {
    return ControlCase::As<Interface>(ComPtr<IDispatch>(planner.Get()));
  }

  HRESULT Draw(HDC dc, const RECTL& bounds) {
    return As<IViewObject2>(NewPlanner())
        ->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, &bounds, nullptr, nullptr, 0);
  }
};

TEST_F(OutlookVelkor, RegistersForTheMachineAndForOneUserAndLeavesNothingBehind) {
  const auto value = [](RootKey root, const char* key) {
    return WindowsRegistry().QueryValue(root, std::string("Software\\Classes\\") + key, "").data;
  };
  const std::string id = value(RootKey::LocalMachine, "OutlookVelkor.YearPlan\\CLSID");
  EXPECT_EQ(value(RootKey::LocalMachine, ("CLSID\\" + id + "\\InprocServer32").c_str()),
            ControlLibrary::Path());
  EXPECT_EQ(library_.Install(true, L"user"), S_OK);
  EXPECT_EQ(value(RootKey::CurrentUser, "OutlookVelkor.YearPlan\\CLSID"), id);
  EXPECT_EQ(library_.Install(false, L"user"), S_OK);
  EXPECT_EQ(value(RootKey::CurrentUser, "OutlookVelkor.YearPlan\\CLSID"), "");
  EXPECT_EQ(library_.Call("DllUnregisterServer"), S_OK);
  EXPECT_EQ(value(RootKey::LocalMachine, ("CLSID\\" + id).c_str()), "");
}

TEST_F(OutlookVelkor, PropertiesHaveTheirDefaultsAndTakeWhatAutomationConverts) {
  const AutomationObject planner = NewPlanner();
  EXPECT_EQ(planner.Get("Folder").ToText(), "");
  EXPECT_EQ(planner.Get("TitleName").ToText(), "Default");
  EXPECT_EQ(planner.Get("AppointmentForm").ToText(), "IPM.Appointment");
  for (const char* name : {"AllEvents", "HideNonCategoryItems", "DisplaySubject"}) {
    EXPECT_EQ(planner.Get(name).Get().vt, VT_BOOL) << name;
    EXPECT_FALSE(planner.Get(name).ToBool()) << name;
    planner.Put(name, Variant(std::int32_t{1}));
    EXPECT_TRUE(planner.Get(name).ToBool()) << name;
  }
  planner.Put("Folder", Variant("Persönlich\\Kalender 休"));
  EXPECT_EQ(planner.Get("Folder").ToText(), "Persönlich\\Kalender 休");
  EXPECT_ANY_THROW(planner.Put("AllEvents", Variant("neither")));
  EXPECT_TRUE(planner.Get("AllEvents").ToBool());
  EXPECT_ANY_THROW(planner.Get("FirstMonth"));
}

/// Names of changed properties as the container hears them.
class ChangeSink : public ComObject<IPropertyNotifySink> {
 public:
  std::vector<DISPID> changed;
  STDMETHODIMP OnChanged(DISPID member) override {
    changed.push_back(member);
    return S_OK;
  }
  STDMETHODIMP OnRequestEdit(DISPID /*member*/) override { return S_OK; }
};

TEST_F(OutlookVelkor, EachWriteIsToldToTheContainer) {
  const AutomationObject planner = NewPlanner();
  const auto points = As<IConnectionPointContainer>(planner);
  ComPtr<IConnectionPoint> point;
  ASSERT_EQ(points->FindConnectionPoint(__uuidof(IPropertyNotifySink), &point), S_OK);
  const ComPtr<ChangeSink> sink(new ChangeSink);
  DWORD cookie = 0;
  ASSERT_EQ(point->Advise(sink.Get(), &cookie), S_OK);
  const auto stored = As<IPersistStreamInit>(planner);
  EXPECT_EQ(stored->IsDirty(), S_FALSE);
  planner.Put("Folder", Variant("A"));
  planner.Put("AllEvents", Variant(true));
  planner.Put("AppointmentForm", Variant("IPM.Appointment.X"));
  EXPECT_THAT(sink->changed, testing::ElementsAre(1, 2, 6));
  EXPECT_EQ(stored->IsDirty(), S_OK);
  EXPECT_EQ(point->Unadvise(cookie), S_OK);
  EXPECT_EQ(point->Unadvise(cookie), CONNECT_E_NOCONNECTION);
  planner.Put("Folder", Variant("B"));
  EXPECT_EQ(sink->changed.size(), 3U);
}

TEST_F(OutlookVelkor, ABagKeepsTheSevenValuesUnderTheirKeys) {
  const ComPtr<TextBag> bag(new TextBag);
  bag->values[L"Folder"] = Variant("Team\\Leave");
  bag->values[L"AllEvents"] = Variant("-1");
  bag->values[L"StartMonth"] = Variant("10");
  const AutomationObject planner = NewPlanner();
  const auto persistent = As<IPersistPropertyBag>(planner);
  ASSERT_EQ(persistent->Load(bag.Get(), nullptr), S_OK);
  EXPECT_EQ(planner.Get("Folder").ToText(), "Team\\Leave");
  EXPECT_TRUE(planner.Get("AllEvents").ToBool());

  const ComPtr<TextBag> changed(new TextBag);
  ASSERT_EQ(persistent->Save(changed.Get(), TRUE, FALSE), S_OK);
  EXPECT_EQ(changed->values.size(), 3U);
  EXPECT_EQ(changed->values[L"StartMonth"].Get().vt, VT_I2);
  EXPECT_EQ(changed->values[L"StartMonth"].ToInt(), 10);
  const ComPtr<TextBag> all(new TextBag);
  ASSERT_EQ(persistent->Save(all.Get(), TRUE, TRUE), S_OK);
  EXPECT_EQ(all->values.size(), 7U);
  EXPECT_EQ(all->values[L"TitleName"].ToText(), "Default");

  class UntouchedBag : public TextBag {
   public:
    STDMETHODIMP Read(LPCOLESTR, VARIANT*, IErrorLog*) override { return S_FALSE; }
  };
  const ComPtr<TextBag> untouched(new UntouchedBag);
  ASSERT_EQ(persistent->Load(untouched.Get(), nullptr), S_OK);
  EXPECT_EQ(planner.Get("TitleName").ToText(), "Default");

  bag->values[L"StartMonth"] = Variant("soon");
  EXPECT_TRUE(FAILED(persistent->Load(bag.Get(), nullptr)));
}

TEST_F(OutlookVelkor, AStreamComesBackWholeAndABrokenOneIsRefused) {
  const AutomationObject planner = NewPlanner();
  planner.Put("Folder", Variant("Räume"));
  planner.Put("DisplaySubject", Variant(true));
  ComPtr<IStream> stream;
  ASSERT_EQ(::CreateStreamOnHGlobal(nullptr, TRUE, &stream), S_OK);
  ASSERT_EQ(As<IPersistStreamInit>(planner)->Save(stream.Get(), TRUE), S_OK);
  STATSTG written{};
  stream->Stat(&written, STATFLAG_NONAME);
  std::vector<BYTE> bytes(static_cast<std::size_t>(written.cbSize.QuadPart));
  stream->Seek({}, STREAM_SEEK_SET, nullptr);
  stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr);

  const auto load = [&](std::size_t length, AutomationObject& into) {
    ComPtr<IStream> part;
    part.Attach(::SHCreateMemStream(bytes.data(), static_cast<UINT>(length)));
    return part ? As<IPersistStreamInit>(into)->Load(part.Get()) : E_FAIL;
  };
  for (std::size_t length = 1; length < bytes.size(); ++length) {
    AutomationObject other = NewPlanner();
    EXPECT_TRUE(FAILED(load(length, other))) << length;
    EXPECT_EQ(other.Get("Folder").ToText(), "");
  }
  AutomationObject other = NewPlanner();
  ASSERT_EQ(load(bytes.size(), other), S_OK);
  EXPECT_EQ(other.Get("Folder").ToText(), "Räume");
  EXPECT_TRUE(other.Get("DisplaySubject").ToBool());
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    bytes[at] ^= 0xFF;
    AutomationObject damaged = NewPlanner();
    load(bytes.size(), damaged);
    bytes[at] ^= 0xFF;
  }
}

TEST_F(OutlookVelkor, AStreamLoadsTheLongestTextsAndNoLongerOnesAreTaken) {
  const AutomationObject planner = NewPlanner();
  for (const auto& [name, longest] :
       {std::pair("Folder", 32'767), {"TitleName", 214}, {"AppointmentForm", 255}}) {
    const std::string text(longest, 'x');
    planner.Put(name, Variant(text));
    EXPECT_ANY_THROW(planner.Put(name, Variant(text + "y"))) << name;
  }
  ComPtr<IStream> stream;
  ASSERT_EQ(::CreateStreamOnHGlobal(nullptr, TRUE, &stream), S_OK);
  ASSERT_EQ(As<IPersistStreamInit>(planner)->Save(stream.Get(), TRUE), S_OK);
  stream->Seek({}, STREAM_SEEK_SET, nullptr);
  const AutomationObject other = NewPlanner();
  ASSERT_EQ(As<IPersistStreamInit>(other)->Load(stream.Get()), S_OK);
  EXPECT_EQ(other.Get("Folder").ToText().size(), 32'767U);
  EXPECT_EQ(other.Get("TitleName").ToText(), std::string(214, 'x'));
}

TEST_F(OutlookVelkor, IsSafeForDataAndNotForScripts) {
  const auto safety = As<IObjectSafety>(NewPlanner());
  DWORD supported = 0;
  DWORD enabled = 0;
  EXPECT_EQ(safety->GetInterfaceSafetyOptions(__uuidof(IPersistPropertyBag), &supported, &enabled),
            S_OK);
  EXPECT_EQ(supported, DWORD{INTERFACESAFE_FOR_UNTRUSTED_DATA});
  EXPECT_EQ(
      safety->SetInterfaceSafetyOptions(__uuidof(IDispatch), INTERFACESAFE_FOR_UNTRUSTED_CALLER,
                                        INTERFACESAFE_FOR_UNTRUSTED_CALLER),
      E_FAIL);
}

/// The colours of a picture within bounds; outside of them it is black.
std::size_t ColoursIn(const DibSection& picture, const RECTL& bounds) {
  std::set<std::int32_t> within;
  for (int y = 0; y < picture.Height(); ++y) {
    for (int x = 0; x < picture.Width(); ++x) {
      const bool inside =
          x >= bounds.left && x < bounds.right && y >= bounds.top && y < bounds.bottom;
      if (inside) within.insert(picture.At(x, y).value);
      EXPECT_TRUE(inside || picture.At(x, y) == colours::Black) << x << ' ' << y;
    }
  }
  return within.size();
}

TEST_F(OutlookVelkor, DrawsItselfIntoAPartOfAnyDeviceContext) {
  const DibSection picture(500, 300);
  const RECTL bounds{50, 30, 450, 270};
  ASSERT_EQ(Draw(picture.Dc(), bounds), S_OK);
  EXPECT_GT(ColoursIn(picture, bounds), 3U);
}

TEST_F(OutlookVelkor, DrawsItselfIntoAMetafileThatIsScaledLater) {
  const HDC recorded = ::CreateMetaFileW(nullptr);
  ::SetMapMode(recorded, MM_ANISOTROPIC);
  ::SetWindowExtEx(recorded, 23000, 12000, nullptr);
  ASSERT_EQ(Draw(recorded, {0, 0, 23000, 12000}), S_OK);
  const HMETAFILE metafile = ::CloseMetaFile(recorded);
  const DibSection picture(460, 240);
  ::SetMapMode(picture.Dc(), MM_ANISOTROPIC);
  ::SetViewportExtEx(picture.Dc(), 460, 240, nullptr);
  ::PlayMetaFile(picture.Dc(), metafile);
  ::DeleteMetaFile(metafile);
  EXPECT_GT(ColoursIn(picture, {0, 0, 460, 240}), 3U);
  EXPECT_NE(picture.At(459, 239), colours::Black);
}

TEST_F(OutlookVelkor, TellsThatThereIsNoOutlookAndGoesOn) {
  const AtlContainer container;
  ASSERT_EQ(container.Result(), S_OK);
  ASSERT_NE(container.Child(), nullptr);
  std::wstring told;
  const DriveDialog drive([&] {
    const HWND message = WaitForDialog(L"OutlookVelkor");
    told = TextOf(message, 0xFFFF);
    Answer(message, IDOK);
  });
  EXPECT_TRUE(PumpUntil([&] { return !told.empty(); }));
  EXPECT_THAT(ToUtf8(told), testing::HasSubstr("(Step:1)"));
  EXPECT_EQ(Planner(container.Control()).Get("TitleName").ToText(), "Default");
}

TEST_F(OutlookVelkor, AContainerThatClosesWhileAMessageIsOpenTakesNothingAwayTooEarly) {
  AtlContainer container;
  bool closed = false;
  const MessageWindow closer([&](UINT, WPARAM) {
    container.Close();
    closed = true;
  });
  const DriveDialog drive([&] {
    const HWND message = WaitForDialog(L"OutlookVelkor");
    ::PostMessageW(closer.Get(), WM_APP, 0, 0);
    WaitUntil("end of the message", [&] { return !::IsWindow(message); });
  });
  EXPECT_TRUE(PumpUntil([&] { return closed; }));
}

class ControlDensity : public OutlookVelkor {};

TEST_F(ControlDensity, FollowsItsContainerWholeAndKeepsNothingOfIt) {
  const AtlContainer container;
  const HWND control = container.Child();
  const HWND toolbar = ::FindWindowExW(control, nullptr, TOOLBARCLASSNAMEW, nullptr);
  const HWND year = ::FindWindowExW(control, nullptr, L"STATIC", nullptr);
  const auto stand = [&](UINT dots) {
    KeepDotsPerInch(container.Window(), dots);
    ::SendMessageW(control, WM_DPICHANGED_AFTERPARENT, 0, 0);
  };
  for (const UINT dots : {144u, 192u, 96u}) {
    stand(dots);
    const auto times = [&](int pixels) { return static_cast<int>(pixels * dots / 96); };
    RECT area{};
    ::GetClientRect(toolbar, &area);
    EXPECT_NEAR(area.bottom, times(34), 1);
    int side = 0;
    int height = 0;
    const LRESULT images = ::SendMessageW(toolbar, TB_GETIMAGELIST, 0, 0);
    ::ImageList_GetIconSize(reinterpret_cast<HIMAGELIST>(images), &side, &height);
    EXPECT_EQ(side, times(20));
    ::GetClientRect(year, &area);
    EXPECT_NEAR(area.bottom, times(34), 1);
    EXPECT_NEAR(MetricsOfFont(year).tmHeight, times(20), times(3));
    const RECT place{0, 0, 960, 480};
    EXPECT_EQ(container.Control<IOleInPlaceObject>()->SetObjectRects(&place, &place), S_OK);
    SIZEL extent{};
    container.Control<IOleObject>()->GetExtent(DVASPECT_CONTENT, &extent);
    EXPECT_NEAR(extent.cx, 2540.0 * 960 / dots, 2);
  }
  const HeldHandles before;
  for (int i = 0; i < 5; ++i) {
    stand(192);
    stand(96);
  }
  ExpectNoMoreThan(before);
  KeepDotsPerInch(container.Window(), 0);
}

}  // namespace
}  // namespace velkor
