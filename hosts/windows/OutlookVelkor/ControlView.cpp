// hosts/windows/OutlookVelkor/ControlView.cpp: the control drawn where the container wants it.
#include "hosts/windows/OutlookVelkor/ControlPicture.h"
#include "hosts/windows/OutlookVelkor/YearPlanControl.h"
#include "platform/windows/com/ComError.h"

namespace velkor {
STDMETHODIMP YearPlanControl::Draw(DWORD aspect, LONG /*index*/, void* /*aspectInfo*/,
                                   DVTARGETDEVICE* /*device*/, HDC /*targetDc*/, HDC dc,
                                   LPCRECTL bounds, LPCRECTL /*windowBounds*/,
                                   BOOL(STDMETHODCALLTYPE* /*proceed*/)(ULONG_PTR),
                                   ULONG_PTR /*token*/) {
  if (dc == nullptr || bounds == nullptr) return E_INVALIDARG;
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  return Answer([&] {
    Extent size{extent_.cx * TwipsPerInch / HimetricPerInch,
                extent_.cy * TwipsPerInch / HimetricPerInch};
    RECT area{};
    const HWND window = window_ ? window_->Window() : nullptr;
    const PixelSize pixel = ScreenPixel();
    if (window != nullptr && ::GetClientRect(window, &area) && area.right > 0 && area.bottom > 0) {
      size = {area.right * static_cast<double>(pixel.width),
              area.bottom * static_cast<double>(pixel.height)};
    } else {
      plan_.Resize(size, pixel);
    }
    DrawControl(plan_.Elements(), size, dc, *bounds);
  });
}

STDMETHODIMP YearPlanControl::GetColorSet(DWORD /*aspect*/, LONG /*index*/, void* /*aspectInfo*/,
                                          DVTARGETDEVICE* /*device*/, HDC /*targetDc*/,
                                          LOGPALETTE** colours) {
  if (colours != nullptr) *colours = nullptr;
  return E_NOTIMPL;
}

STDMETHODIMP YearPlanControl::Freeze(DWORD /*aspect*/, LONG /*index*/, void* /*aspectInfo*/,
                                     DWORD* /*token*/) {
  return E_NOTIMPL;
}

STDMETHODIMP YearPlanControl::Unfreeze(DWORD /*token*/) {
  return E_NOTIMPL;
}

STDMETHODIMP YearPlanControl::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
  if ((aspects & ~DWORD{DVASPECT_CONTENT}) != 0) return DV_E_DVASPECT;
  viewSink_ = sink;
  viewSinkAspects_ = aspects;
  viewSinkFlags_ = flags;
  if ((flags & ADVF_PRIMEFIRST) != 0) TellView();
  return S_OK;
}

STDMETHODIMP YearPlanControl::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
  if (aspects != nullptr) *aspects = viewSinkAspects_;
  if (flags != nullptr) *flags = viewSinkFlags_;
  return sink == nullptr ? S_OK : viewSink_.CopyTo(sink);
}

STDMETHODIMP YearPlanControl::GetExtent(DWORD aspect, LONG /*index*/, DVTARGETDEVICE* /*device*/,
                                        SIZEL* size) {
  return GetExtent(aspect, size);
}

void YearPlanControl::TellView() {
  const EntryScope entry(owner_);
  const BusyScope busy(owner_);
  if (dataAdviseHolder_) dataAdviseHolder_->SendOnDataChange(this, 0, 0);
  const ComPtr<IAdviseSink> sink = viewSink_;
  if (!sink) return;
  if ((viewSinkFlags_ & ADVF_ONLYONCE) != 0) viewSink_.Reset();
  sink->OnViewChange(DVASPECT_CONTENT, -1);
}

}  // namespace velkor
