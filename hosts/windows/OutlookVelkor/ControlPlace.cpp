// hosts/windows/OutlookVelkor/ControlPlace.cpp: the steps into a container's window and out of it.
#include "hosts/windows/OutlookVelkor/ControlPlace.h"

#include <utility>

#include "hosts/windows/OutlookVelkor/ContainerAmbients.h"
#include "hosts/windows/OutlookVelkor/Himetric.h"

namespace velkor {
namespace {

/// Values of KEYMODIFIERS (ocidl.idl), which the cross compiler's headers lack.
constexpr DWORD ShiftKey = 1;
constexpr DWORD ControlKey = 2;
constexpr DWORD AltKey = 4;

bool IsEmpty(const RECT& place) {
  return place.right <= place.left || place.bottom <= place.top;
}

}  // namespace

ControlPlace::ControlPlace(ControlLife& life, YearPlan& plan, IOleInPlaceActiveObject& control,
                           std::function<bool()> isWaiting, std::function<void()> onSystemColours)
    : life_(life),
      plan_(plan),
      control_(control),
      isWaiting_(std::move(isWaiting)),
      onSystemColours_(std::move(onSystemColours)),
      extent_(FirstExtent) {
  life_.Owner().onModal = [this](bool open) { FrameIsModal(open); };
}

ControlPlace::~ControlPlace() {
  life_.Owner().onModal = nullptr;
}

void ControlPlace::SetSite(IOleClientSite* site) {
  if (site != site_.Get()) Close();
  site_ = site;
}

bool ControlPlace::IsDesignMode() const {
  const Variant used = AmbientOf(life_, site_, DISPID_AMBIENT_USERMODE);
  return used.Get().vt == VT_BOOL && used.Get().boolVal == VARIANT_FALSE;
}

void ControlPlace::SetManner(ControlManner manner) {
  manner_ = std::move(manner);
  Behave();
}

void ControlPlace::SetModeless(bool modeless) {
  modeless_ = modeless;
  Behave();
}

void ControlPlace::Behave() {
  if (!window_) return;
  window_->SetUsable(manner_.usable && modeless_);
  // The container is told that the keyboard left, and may take the window away.
  if (!window_) return;
  window_->SetFrame(uiActive_ && manner_.hatching, uiActive_ && manner_.grabHandles);
}

HRESULT ControlPlace::Open() {
  const ComPtr<IOleClientSite> site = site_;
  if (!site) return E_UNEXPECTED;
  // Windows go with the container's.
  if (window_ && window_->Window() == nullptr) Close();
  if (window_) return S_OK;
  const HRESULT result = MakeWindow(*site.Get());
  if (FAILED(result)) return result;
  life_.Tell(site, [](IOleClientSite& told) { return told.ShowObject(); });
  return S_OK;
}

HRESULT ControlPlace::MakeWindow(IOleClientSite& site) {
  ComPtr<IOleInPlaceSite> place;
  HRESULT result = site.QueryInterface(IID_PPV_ARGS(&place));
  if (FAILED(result)) return result;
  HWND parent = nullptr;
  result = life_.Tell(place, [&](IOleInPlaceSite& told) {
    if (told.CanInPlaceActivate() != S_OK) return E_FAIL;
    const HRESULT found = told.GetWindow(&parent);
    return FAILED(found) ? found : told.OnInPlaceActivate();
  });
  if (FAILED(result)) return result;
  RECT position{};
  RECT clip{};
  OLEINPLACEFRAMEINFO frameInfo{};
  frameInfo.cb = sizeof frameInfo;
  ComPtr<IOleInPlaceFrame> frame;
  ComPtr<IOleInPlaceUIWindow> document;
  life_.Tell(place, [&](IOleInPlaceSite& told) {
    return told.GetWindowContext(&frame, &document, &position, &clip, &frameInfo);
  });
  // It may have changed its mind meanwhile.
  if (site_.Get() != &site) {
    life_.Tell(place, [](IOleInPlaceSite& told) { return told.OnInPlaceDeactivate(); });
    return E_FAIL;
  }
  // Or have asked for the same in between.
  if (window_) return S_OK;

  frame_ = frame;
  document_ = document;
  inPlaceSite_ = place;
  life_.Owner().SetWindow(parent);
  window_ = std::make_unique<ControlWindow>(
      plan_, parent, position, life_.Owner(),
      ControlWindowCalls{.onFocus = [this](bool has) { FocusChanged(has); },
                         .onSystemColours = onSystemColours_,
                         .isWaiting = isWaiting_});
  if (window_->Window() == nullptr) {
    Close();
    return E_FAIL;
  }
  SetRects(position, &clip);
  Behave();
  return S_OK;
}

void ControlPlace::Close() {
  if (!window_) return;
  UiDeactivate();
  if (!window_) return;
  // A handler of its elements may be running.
  const std::shared_ptr<ControlWindow> window = std::move(window_);
  life_.Retire(window);
  window->Destroy();
  life_.Owner().SetWindow(nullptr);
  frame_.Reset();
  document_.Reset();
  life_.Tell(std::exchange(inPlaceSite_, nullptr),
             [](IOleInPlaceSite& told) { return told.OnInPlaceDeactivate(); });
}

void ControlPlace::TakeKeyboard(KeyboardEntry entry) {
  UiActivate();
  if (window_) window_->Focus(entry);
}

void ControlPlace::UiActivate() {
  if (uiActive_ || !inPlaceSite_) return;
  uiActive_ = true;
  const auto show = [this](IOleInPlaceUIWindow& told) {
    const std::wstring name = manner_.name.empty() ? L"YearPlan" : manner_.name;
    return uiActive_ ? told.SetActiveObject(&control_, name.c_str()) : S_OK;
  };
  if (FAILED(life_.Tell(inPlaceSite_, [](IOleInPlaceSite& told) { return told.OnUIActivate(); }))) {
    uiActive_ = false;
  }
  const ComPtr<IOleInPlaceFrame> frame = frame_;
  const ComPtr<IOleInPlaceUIWindow> document = document_;
  life_.Tell(frame, show);
  life_.Tell(document, show);
  if (uiActive_) {
    life_.Tell(frame, [](IOleInPlaceFrame& told) { return told.SetBorderSpace(nullptr); });
  }
  Behave();
}

void ControlPlace::UiDeactivate() {
  if (!std::exchange(uiActive_, false)) return;
  Behave();
  const auto hide = [](IOleInPlaceUIWindow& told) {
    return told.SetActiveObject(nullptr, nullptr);
  };
  const ComPtr<IOleInPlaceSite> site = inPlaceSite_;
  const ComPtr<IOleInPlaceUIWindow> document = document_;
  life_.Tell(frame_, hide);
  life_.Tell(document, hide);
  life_.Tell(site, [](IOleInPlaceSite& told) { return told.OnUIDeactivate(FALSE); });
}

ComPtr<IOleControlSite> ControlPlace::ControlSite() const {
  ComPtr<IOleControlSite> site;
  if (site_) site_.As(&site);
  return site;
}

void ControlPlace::FocusChanged(bool has) {
  if (has) UiActivate();
  if (std::exchange(hasFocus_, has) == has) return;
  life_.Tell(ControlSite(), [has](IOleControlSite& told) { return told.OnFocus(has); });
}

/// A frame hears of the end of each dialog that it was told of, though the control may have left
/// it.
void ControlPlace::FrameIsModal(bool open) {
  if (open) modalFrames_.push_back(frame_);
  const ComPtr<IOleInPlaceFrame> frame = modalFrames_.back();
  if (!open) modalFrames_.pop_back();
  life_.Tell(frame, [open](IOleInPlaceFrame& told) { return told.EnableModeless(!open); });
}

void ControlPlace::SetRects(const RECT& place, const RECT* clip) {
  if (!window_) return;
  window_->Move(place);
  if (!IsEmpty(place)) {
    extent_ = ToHimetric(Units().ToTwips(SIZE{place.right - place.left, place.bottom - place.top}));
  }
  Cover(place, clip);
}

/// What the container covers of the control stays covered.
void ControlPlace::Cover(const RECT& place, const RECT* clip) {
  HRGN region = nullptr;
  RECT seen{};
  if (clip != nullptr && !IsEmpty(*clip)) {
    ::IntersectRect(&seen, &place, clip);
    if (!::EqualRect(&seen, &place)) {
      ::OffsetRect(&seen, -place.left, -place.top);
      region = ::CreateRectRgnIndirect(&seen);
    }
  }
  if (!::SetWindowRgn(Window(), region, TRUE) && region != nullptr) ::DeleteObject(region);
}

HRESULT ControlPlace::TranslateKey(MSG& message) {
  if (window_ && window_->TranslateKey(message)) return S_OK;
  const ComPtr<IOleControlSite> site = ControlSite();
  if (!site) return S_FALSE;
  DWORD modifiers = 0;
  if (::GetKeyState(VK_SHIFT) < 0) modifiers |= ShiftKey;
  if (::GetKeyState(VK_CONTROL) < 0) modifiers |= ControlKey;
  if (::GetKeyState(VK_MENU) < 0) modifiers |= AltKey;
  return life_.Tell(
      site, [&](IOleControlSite& told) { return told.TranslateAccelerator(&message, modifiers); });
}

}  // namespace velkor
