// hosts/windows/OutlookVelkor/ControlView.cpp: the control drawn where the container wants it.
#include "hosts/windows/OutlookVelkor/ControlPicture.h"
#include "hosts/windows/OutlookVelkor/Himetric.h"
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
    Extent size = ToTwipsOfHimetric(place_.Extent());
    RECT area{};
    const HWND window = place_.Window();
    if (window != nullptr && ::GetClientRect(window, &area) && area.right > 0 && area.bottom > 0) {
      size = place_.Units().ToTwips(SIZE{area.right, area.bottom});
    } else {
      plan_.Resize(size, place_.Units().Pixel());
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

STDMETHODIMP YearPlanControl::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
  const EntryScope entry(life_.Owner());
  return listeners_.SetAdvise(aspects, flags, sink);
}

}  // namespace velkor
