// tests/hosts/windows/BareContainer.h: a container that does no more than it must, and writes down
// what a control tells it.
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tests/hosts/windows/ControlCase.h"

namespace velkor {

/// Site and frame of one control, in a window of its own.
class BareContainer : public ComObject<IOleClientSite, IOleInPlaceSite, IOleInPlaceFrame,
                                       IOleControlSite, IDispatch> {
 public:
  /// What was told, in order.
  std::vector<std::string> told;
  /// What the container does when it is told so, the next time only.
  std::map<std::string, std::function<void()>> reactions;
  std::wstring activeName;
  ComPtr<IOleObject> control;
  RECT place{10, 10, 610, 310};
  RECT clip{};
  /// Ambient properties beside that, by their identifiers.
  std::map<DISPID, std::function<Variant()>> ambients;
  /// Answers whether a control is used (DISPID_AMBIENT_USERMODE), not only placed; null: the
  /// container has no properties at all.
  using UserMode = std::function<HRESULT(Variant& used)>;
  static HRESULT Uses(Variant& used) {
    used = Variant(true);
    return S_OK;
  }
  static HRESULT Designs(Variant& used) {
    used = Variant(false);
    return S_OK;
  }

  explicit BareContainer(ComPtr<IOleObject> made, UserMode userMode = Uses)
      : control(std::move(made)), userMode_(std::move(userMode)) {
    MakeWindow();
    control->SetClientSite(this);
  }
  void MakeWindow() {
    window_ = ::CreateWindowExW(0, L"STATIC", L"Container", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                700, 400, nullptr, nullptr, nullptr, nullptr);
  }
  HWND Window() const { return window_; }
  HWND Child() const { return ::GetWindow(window_, GW_CHILD); }
  HRESULT Do(LONG verb) {
    const ComPtr<IOleObject> kept(control);
    return kept->DoVerb(verb, nullptr, this, 0, window_, &place);
  }
  /// Lets the control go for good.
  void Drop() {
    const ComPtr<IOleObject> last = std::exchange(control, nullptr);
    if (!last) return;
    last->Close(OLECLOSE_NOSAVE);
    last->SetClientSite(nullptr);
  }
  void Close() {
    Drop();
    if (::IsWindow(window_)) ::DestroyWindow(window_);
  }
  std::ptrdiff_t Count(const std::string& what) const { return std::ranges::count(told, what); }

  STDMETHODIMP SaveObject() override { return Hear("SaveObject"); }
  STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
  STDMETHODIMP GetContainer(IOleContainer**) override { return E_NOINTERFACE; }
  STDMETHODIMP ShowObject() override { return Hear("ShowObject"); }
  STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
  STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }

  STDMETHODIMP GetWindow(HWND* window) override {
    *window = window_;
    return S_OK;
  }
  STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP CanInPlaceActivate() override { return S_OK; }
  STDMETHODIMP OnInPlaceActivate() override { return Hear("OnInPlaceActivate"); }
  STDMETHODIMP OnUIActivate() override { return Hear("OnUIActivate"); }
  STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                LPRECT position, LPRECT clipping, LPOLEINPLACEFRAMEINFO) override {
    *frame = this;
    AddRef();
    *document = nullptr;
    *position = place;
    *clipping = clip;
    return S_OK;
  }
  STDMETHODIMP Scroll(SIZE) override { return E_NOTIMPL; }
  STDMETHODIMP OnUIDeactivate(BOOL) override { return Hear("OnUIDeactivate"); }
  STDMETHODIMP OnInPlaceDeactivate() override { return Hear("OnInPlaceDeactivate"); }
  STDMETHODIMP DiscardUndoState() override { return E_NOTIMPL; }
  STDMETHODIMP DeactivateAndUndo() override { return E_NOTIMPL; }
  STDMETHODIMP OnPosRectChange(LPCRECT) override { return S_OK; }

  STDMETHODIMP GetBorder(LPRECT) override { return INPLACE_E_NOTOOLSPACE; }
  STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS) override { return INPLACE_E_NOTOOLSPACE; }
  STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS) override { return S_OK; }
  STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR name) override {
    active_ = object;
    if (object != nullptr) activeName = name;
    return Hear(object != nullptr ? "SetActiveObject" : "SetActiveObject(null)");
  }
  STDMETHODIMP InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
  STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
  STDMETHODIMP RemoveMenus(HMENU) override { return S_OK; }
  STDMETHODIMP SetStatusText(LPCOLESTR) override { return S_OK; }
  STDMETHODIMP EnableModeless(BOOL enable) override {
    return Hear(enable ? "EnableModeless(TRUE)" : "EnableModeless(FALSE)");
  }
  STDMETHODIMP TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

  STDMETHODIMP OnControlInfoChanged() override { return S_OK; }
  STDMETHODIMP LockInPlaceActive(BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP GetExtendedControl(IDispatch**) override { return E_NOTIMPL; }
  STDMETHODIMP TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP TranslateAccelerator(MSG*, DWORD) override { return S_FALSE; }
  STDMETHODIMP OnFocus(BOOL has) override { return Hear(has ? "OnFocus(TRUE)" : "OnFocus(FALSE)"); }
  STDMETHODIMP ShowPropertyFrame() override { return E_NOTIMPL; }

  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                      UINT*) override {
    if (const auto found = ambients.find(member); found != ambients.end()) {
      told.push_back("ambient " + std::to_string(member));
      found->second().MoveTo(result);
      return S_OK;
    }
    if (member != DISPID_AMBIENT_USERMODE) return DISP_E_MEMBERNOTFOUND;
    Variant used;
    const HRESULT answer = userMode_(used);
    if (SUCCEEDED(answer)) used.MoveTo(result);
    return answer;
  }
  STDMETHODIMP QueryInterface(REFIID id, void** object) override {
    if (id == __uuidof(IDispatch) && !userMode_) return E_NOINTERFACE;
    return ComObject::QueryInterface(id, object);
  }

 private:
  HRESULT Hear(const std::string& what) {
    told.push_back(what);
    const auto reaction = reactions.extract(what);
    if (!reaction.empty()) reaction.mapped()();
    return S_OK;
  }

  HWND window_ = nullptr;
  UserMode userMode_;
  ComPtr<IOleInPlaceActiveObject> active_;
};

}  // namespace velkor
