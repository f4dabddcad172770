// hosts/windows/OutlookVelkor/ControlInPlace.cpp: the control's window in the container's.
#include <utility>

#include "hosts/windows/OutlookVelkor/YearPlanControl.h"

namespace velkor {
namespace {

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
  const ComPtr<IOleClientSite> site = site_;
  if (!site) return E_UNEXPECTED;
  // Windows go with the container's.
  if (window_ && window_->Window() == nullptr) InPlaceDeactivate();
  if (!window_) {
    const HRESULT result = MakeWindow(*site.Get());
    if (FAILED(result)) return result;
    site->ShowObject();
  }
  Start();
  if (withKeyboard) {
    UiActivate();
    if (window_) window_->Focus();
  }
  return S_OK;
}

HRESULT YearPlanControl::MakeWindow(IOleClientSite& site) {
  ComPtr<IOleInPlaceSite> place;
  HRESULT result = site.QueryInterface(IID_PPV_ARGS(&place));
  if (FAILED(result)) return result;
  if (place->CanInPlaceActivate() != S_OK) return E_FAIL;
  HWND parent = nullptr;
  result = place->GetWindow(&parent);
  if (FAILED(result)) return result;
  result = place->OnInPlaceActivate();
  if (FAILED(result)) return result;
  // It may have changed its mind meanwhile.
  if (site_.Get() != &site) {
    place->OnInPlaceDeactivate();
    return E_FAIL;
  }

  RECT position{};
  RECT clip{};
  OLEINPLACEFRAMEINFO frameInfo{};
  frameInfo.cb = sizeof frameInfo;
  place->GetWindowContext(&frame_, &document_, &position, &clip, &frameInfo);
  inPlaceSite_ = place;
  owner_.SetWindow(parent);
  window_ = std::make_unique<ControlWindow>(
      plan_, parent, position, owner_,
      ControlWindowCalls{.onFocus = [this](bool has) { FocusChanged(has); },
                         .isWaiting = [this] { return seams_.IsWaiting(); }});
  if (window_->Window() == nullptr) {
    InPlaceDeactivate();
    return E_FAIL;
  }
  return SetObjectRects(&position, &clip);
}

void YearPlanControl::UiActivate() {
  if (uiActive_ || !inPlaceSite_) return;
  // The container may take the control away in any of these calls.
  const BusyScope busy(owner_);
  uiActive_ = true;
  const ComPtr<IOleInPlaceSite> site = inPlaceSite_;
  if (FAILED(site->OnUIActivate())) uiActive_ = false;
  if (!uiActive_) return;
  const ComPtr<IOleInPlaceFrame> frame = frame_;
  const ComPtr<IOleInPlaceUIWindow> document = document_;
  if (frame) frame->SetActiveObject(this, L"YearPlan");
  if (uiActive_ && document) document->SetActiveObject(this, L"YearPlan");
  if (uiActive_ && frame) frame->SetBorderSpace(nullptr);
}

void YearPlanControl::FocusChanged(bool has) {
  const BusyScope busy(owner_);
  if (has) UiActivate();
  if (hasFocus_ == has) return;
  hasFocus_ = has;
  ComPtr<IOleControlSite> site;
  if (site_ && SUCCEEDED(site_.As(&site))) site->OnFocus(has);
}

/// A frame hears of the end of each dialog that it was told of, though the control may have left
/// it.
void YearPlanControl::FrameIsModal(bool open) {
  if (open) modalFrames_.push_back(frame_);
  const ComPtr<IOleInPlaceFrame> frame = modalFrames_.back();
  if (!open) modalFrames_.pop_back();
  if (frame) frame->EnableModeless(!open);
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
  const EntryScope entry(owner_);
  const BusyScope busy(owner_);
  UIDeactivate();
  if (!window_) return S_OK;
  // A handler of its elements may be running.
  retired_.push_back(std::move(window_));
  retired_.back()->Destroy();
  owner_.SetWindow(nullptr);
  frame_.Reset();
  document_.Reset();
  const ComPtr<IOleInPlaceSite> site = std::exchange(inPlaceSite_, nullptr);
  if (site) site->OnInPlaceDeactivate();
  return S_OK;
}

STDMETHODIMP YearPlanControl::UIDeactivate() {
  if (!uiActive_) return S_OK;
  const EntryScope entry(owner_);
  const BusyScope busy(owner_);
  uiActive_ = false;
  const ComPtr<IOleInPlaceSite> site = inPlaceSite_;
  const ComPtr<IOleInPlaceUIWindow> document = document_;
  if (frame_) ComPtr<IOleInPlaceFrame>(frame_)->SetActiveObject(nullptr, nullptr);
  if (document) document->SetActiveObject(nullptr, nullptr);
  if (site) site->OnUIDeactivate(FALSE);
  return S_OK;
}

STDMETHODIMP YearPlanControl::SetObjectRects(LPCRECT place, LPCRECT clip) {
  if (place == nullptr) return E_POINTER;
  if (!window_) return S_OK;
  const EntryScope entry(owner_);
  window_->Move(*place);
  if (!IsEmpty(*place)) extent_ = ToHimetric(*place);
  // What the container covers of the control stays covered.
  HRGN region = nullptr;
  RECT seen{};
  if (clip != nullptr && !IsEmpty(*clip)) {
    ::IntersectRect(&seen, place, clip);
    if (!::EqualRect(&seen, place)) {
      ::OffsetRect(&seen, -place->left, -place->top);
      region = ::CreateRectRgnIndirect(&seen);
    }
  }
  if (!::SetWindowRgn(window_->Window(), region, TRUE) && region != nullptr) {
    ::DeleteObject(region);
  }
  return S_OK;
}

STDMETHODIMP YearPlanControl::ReactivateAndUndo() {
  return INPLACE_E_NOTUNDOABLE;
}

STDMETHODIMP YearPlanControl::TranslateAccelerator(LPMSG message) {
  if (message == nullptr) return E_POINTER;
  const EntryScope entry(owner_);
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
