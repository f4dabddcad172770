// hosts/windows/OutlookVelkor/ControlInPlace.cpp: the control's window in the container's.
#include <utility>

#include "hosts/windows/OutlookVelkor/YearPlanControl.h"

namespace velkor {
namespace {

constexpr int HimetricPerInch = 2540;
constexpr int TwipsPerInch = 1440;
/// Values of KEYMODIFIERS (ocidl.idl), which the cross compiler's headers lack.
constexpr DWORD ShiftKey = 1;
constexpr DWORD ControlKey = 2;
constexpr DWORD AltKey = 4;

SIZEL ToHimetric(const RECT& place) {
  const PixelSize pixel = ScreenPixel();
  const auto convert = [](LONG pixels, float size) {
    return static_cast<LONG>(pixels * static_cast<double>(size) * HimetricPerInch / TwipsPerInch);
  };
  return {convert(place.right - place.left, pixel.width),
          convert(place.bottom - place.top, pixel.height)};
}

bool IsEmpty(const RECT& place) {
  return place.right <= place.left || place.bottom <= place.top;
}

}  // namespace

HRESULT YearPlanControl::Activate(bool withKeyboard) {
  if (!site_) return E_UNEXPECTED;
  if (!window_ || window_->Window() == nullptr) {
    ComPtr<IOleInPlaceSite> place;
    HRESULT result = site_.As(&place);
    if (FAILED(result)) return result;
    if (place->CanInPlaceActivate() != S_OK) return E_FAIL;
    HWND parent = nullptr;
    result = place->GetWindow(&parent);
    if (FAILED(result)) return result;
    result = place->OnInPlaceActivate();
    if (FAILED(result)) return result;

    ComPtr<IOleInPlaceUIWindow> document;
    RECT position{};
    RECT clip{};
    OLEINPLACEFRAMEINFO frameInfo{};
    frameInfo.cb = sizeof frameInfo;
    frame_.Reset();
    place->GetWindowContext(&frame_, &document, &position, &clip, &frameInfo);
    inPlaceSite_ = place;
    owner_.SetWindow(parent);
    window_ = std::make_unique<ControlWindow>(
        plan_, parent, position, owner_,
        ControlWindowCalls{.onFocus = [this] { UiActivate(); },
                           .isWaiting = [this] { return seams_.IsWaiting(); }});
    if (window_->Window() == nullptr) {
      window_.reset();
      place->OnInPlaceDeactivate();
      return E_FAIL;
    }
    if (!IsEmpty(position)) extent_ = ToHimetric(position);
    site_->ShowObject();
  }
  Start();
  if (withKeyboard) {
    UiActivate();
    if (window_) window_->Focus();
  }
  return S_OK;
}

void YearPlanControl::UiActivate() {
  if (uiActive_ || !inPlaceSite_) return;
  uiActive_ = true;
  if (FAILED(inPlaceSite_->OnUIActivate())) {
    uiActive_ = false;
    return;
  }
  if (frame_) {
    frame_->SetActiveObject(this, L"YearPlan");
    frame_->SetBorderSpace(nullptr);
  }
}

STDMETHODIMP YearPlanControl::GetWindow(HWND* window) {
  if (window == nullptr) return E_POINTER;
  *window = window_ ? window_->Window() : nullptr;
  return *window != nullptr ? S_OK : E_FAIL;
}

STDMETHODIMP YearPlanControl::ContextSensitiveHelp(BOOL /*enter*/) {
  return E_NOTIMPL;
}

STDMETHODIMP YearPlanControl::InPlaceDeactivate() {
  if (!window_) return S_OK;
  const ComPtr<IUnknown> self(Identity());
  UIDeactivate();
  std::unique_ptr<ControlWindow> window = std::move(window_);
  window->Destroy();
  // Until messages flow again a handler of its elements may be running.
  if (owner_.IsBusy() || kept_) retired_.push_back(std::move(window));
  window.reset();
  owner_.SetWindow(nullptr);
  frame_.Reset();
  const ComPtr<IOleInPlaceSite> site = std::exchange(inPlaceSite_, nullptr);
  if (site) site->OnInPlaceDeactivate();
  return S_OK;
}

STDMETHODIMP YearPlanControl::UIDeactivate() {
  if (!uiActive_) return S_OK;
  uiActive_ = false;
  if (frame_) frame_->SetActiveObject(nullptr, nullptr);
  if (inPlaceSite_) inPlaceSite_->OnUIDeactivate(FALSE);
  return S_OK;
}

STDMETHODIMP YearPlanControl::SetObjectRects(LPCRECT place, LPCRECT clip) {
  if (place == nullptr) return E_POINTER;
  if (!window_) return S_OK;
  window_->Move(*place);
  if (!IsEmpty(*place)) extent_ = ToHimetric(*place);
  // What the container covers of the control stays covered.
  HRGN region = nullptr;
  RECT seen{};
  if (clip != nullptr && ::IntersectRect(&seen, place, clip) && !::EqualRect(&seen, place)) {
    ::OffsetRect(&seen, -place->left, -place->top);
    region = ::CreateRectRgnIndirect(&seen);
  }
  ::SetWindowRgn(window_->Window(), region, TRUE);
  return S_OK;
}

STDMETHODIMP YearPlanControl::ReactivateAndUndo() {
  return INPLACE_E_NOTUNDOABLE;
}

STDMETHODIMP YearPlanControl::TranslateAccelerator(LPMSG message) {
  if (message == nullptr) return E_POINTER;
  const ComPtr<IUnknown> self(Identity());
  if (window_ && window_->TranslateKey(*message)) return S_OK;
  ComPtr<IOleControlSite> site;
  if (!site_ || FAILED(site_.As(&site))) return S_FALSE;
  DWORD modifiers = 0;
  if (::GetKeyState(VK_SHIFT) < 0) modifiers |= ShiftKey;
  if (::GetKeyState(VK_CONTROL) < 0) modifiers |= ControlKey;
  if (::GetKeyState(VK_MENU) < 0) modifiers |= AltKey;
  return site->TranslateAccelerator(message, modifiers);
}

STDMETHODIMP YearPlanControl::OnFrameWindowActivate(BOOL /*activate*/) {
  return S_OK;
}

STDMETHODIMP YearPlanControl::OnDocWindowActivate(BOOL /*activate*/) {
  return S_OK;
}

STDMETHODIMP YearPlanControl::ResizeBorder(LPCRECT /*border*/, IOleInPlaceUIWindow* /*window*/,
                                           BOOL /*frame*/) {
  return S_OK;
}

STDMETHODIMP YearPlanControl::EnableModeless(BOOL enable) {
  if (window_ && window_->Window()) ::EnableWindow(window_->Window(), enable);
  return S_OK;
}

}  // namespace velkor
