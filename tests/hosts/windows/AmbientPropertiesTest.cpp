// tests/hosts/windows/AmbientPropertiesTest.cpp: the control at sites that say little of
// themselves.
#include <gmock/gmock.h>

#include <atomic>
#include <optional>

#include "platform/windows/DibSection.h"
#include "tests/hosts/windows/ControlCase.h"
#include "tests/platform/windows/DriveDialog.h"
// After windows.h.
#include <olectl.h>

namespace velkor {
namespace {

/// What a site answers for its user mode.
struct UserMode {
  HRESULT result = S_OK;
  Variant value;
};

/// A window and what in-place activation cannot do without; properties only where it has some.
class Site : public ComObject<IOleClientSite, IOleInPlaceSite, IDispatch> {
 public:
  Site(HWND window, std::optional<UserMode> userMode)
      : window_(window), userMode_(std::move(userMode)) {}

  STDMETHODIMP QueryInterface(REFIID id, void** object) override {
    if (id == __uuidof(IDispatch) && !userMode_) return E_NOINTERFACE;
    return ComObject::QueryInterface(id, object);
  }
  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* value, EXCEPINFO*,
                      UINT*) override {
    if (id != DISPID_AMBIENT_USERMODE) return DISP_E_MEMBERNOTFOUND;
    if (FAILED(userMode_->result)) return userMode_->result;
    return ::VariantCopy(value, const_cast<VARIANT*>(&userMode_->value.Get()));
  }

  STDMETHODIMP SaveObject() override { return E_NOTIMPL; }
  STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
  STDMETHODIMP GetContainer(IOleContainer**) override { return E_NOINTERFACE; }
  STDMETHODIMP ShowObject() override { return S_OK; }
  STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
  STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }

  STDMETHODIMP GetWindow(HWND* window) override {
    *window = window_;
    return S_OK;
  }
  STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP CanInPlaceActivate() override { return S_OK; }
  STDMETHODIMP OnInPlaceActivate() override { return S_OK; }
  STDMETHODIMP OnUIActivate() override { return S_OK; }
  STDMETHODIMP GetWindowContext(IOleInPlaceFrame**, IOleInPlaceUIWindow**, LPRECT place,
                                LPRECT clip, LPOLEINPLACEFRAMEINFO) override {
    ::GetClientRect(window_, place);
    *clip = *place;
    return S_OK;
  }
  STDMETHODIMP Scroll(SIZE) override { return E_NOTIMPL; }
  STDMETHODIMP OnUIDeactivate(BOOL) override { return S_OK; }
  STDMETHODIMP OnInPlaceDeactivate() override { return S_OK; }
  STDMETHODIMP DiscardUndoState() override { return E_NOTIMPL; }
  STDMETHODIMP DeactivateAndUndo() override { return E_NOTIMPL; }
  STDMETHODIMP OnPosRectChange(LPCRECT) override { return S_OK; }

 private:
  HWND window_;
  std::optional<UserMode> userMode_;
};

class AmbientProperties : public testing::Test {
 protected:
  AmbientProperties() { EXPECT_EQ(library_.Call("DllRegisterServer"), S_OK); }
  ~AmbientProperties() override {
    ::DestroyWindow(window_);
    EXPECT_TRUE(Pump(2000, [this] { return library_.CanUnload(); })) << "something holds it";
    EXPECT_EQ(library_.Call("DllUnregisterServer"), S_OK);
  }

  /// Whether a control that is activated at a site starts up, which here ends in a message that
  /// there is no calendar program.
  bool Starts(std::optional<UserMode> userMode, int patience) {
    const ComPtr<Site> site(new Site(window_, std::move(userMode)));
    CLSID id{};
    ComPtr<IOleObject> object;
    EXPECT_EQ(::CLSIDFromProgID(L"OutlookVelkor.YearPlan", &id), S_OK);
    EXPECT_EQ(::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)), S_OK);
    RECT place{0, 0, 900, 500};
    EXPECT_EQ(object->SetClientSite(site.Get()), S_OK);
    EXPECT_EQ(object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, site.Get(), 0, window_, &place),
              S_OK);
    EXPECT_NE(::GetWindow(window_, GW_CHILD), nullptr);
    std::atomic<bool> told = false;
    std::jthread user([&](const std::stop_token& stop) {
      while (!stop.stop_requested() && !told) {
        if (const HWND message = FindOpenWindow({.title = L"OutlookVelkor"})) {
          told = true;
          Press(message, IDOK);
        }
        ::Sleep(10);
      }
    });
    const bool started = Pump(patience, [&] { return told.load(); });
    user.request_stop();
    const DibSection picture(300, 200);
    const RECTL bounds{0, 0, 300, 200};
    ComPtr<IViewObject2> view;
    EXPECT_EQ(object.As(&view), S_OK);
    EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, picture.Dc(), &bounds,
                         nullptr, nullptr, 0),
              S_OK);
    EXPECT_NE(picture.At(150, 100), colours::Black) << "nothing is drawn";
    EXPECT_EQ(object->Close(OLECLOSE_NOSAVE), S_OK);
    EXPECT_EQ(object->SetClientSite(nullptr), S_OK);
    return started;
  }

  const ContainerThread thread_;
  ControlLibrary library_;
  const HWND window_ = ::CreateWindowExW(0, L"STATIC", L"Site", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0,
                                         0, 960, 540, nullptr, nullptr, nullptr, nullptr);
};

TEST_F(AmbientProperties, AControlStartsUnlessItsSiteIsInDesignMode) {
  constexpr int Patience = 10000;
  constexpr int LongerThanTheStart = 600;
  EXPECT_TRUE(Starts(std::nullopt, Patience));
  EXPECT_TRUE(Starts(UserMode{DISP_E_MEMBERNOTFOUND, {}}, Patience));
  EXPECT_TRUE(Starts(UserMode{S_OK, Variant("neither")}, Patience));
  EXPECT_TRUE(Starts(UserMode{S_OK, Variant(true)}, Patience));
  EXPECT_FALSE(Starts(UserMode{S_OK, Variant(false)}, LongerThanTheStart));
}

}  // namespace
}  // namespace velkor
