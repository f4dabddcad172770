// hosts/windows/OutlookVelkor/ControlView.cpp: the control drawn where the container wants it.
#include "hosts/windows/OutlookVelkor/ControlPicture.h"
#include "hosts/windows/OutlookVelkor/Himetric.h"
#include "hosts/windows/OutlookVelkor/YearPlanControl.h"
#include "platform/windows/com/ComError.h"

namespace velkor {

/// What is to be seen of a control that has no year to show; null where it has one, or was changed.
MetafileHandle YearPlanControl::LastSeen() {
  return plan_.IsLive() ? nullptr : lastPicture_.Get();
}

STDMETHODIMP YearPlanControl::Draw(DWORD aspect, LONG /*index*/, void* /*aspectInfo*/,
                                   DVTARGETDEVICE* /*device*/, HDC /*targetDc*/, HDC dc,
                                   LPCRECTL bounds, LPCRECTL /*windowBounds*/,
                                   BOOL(STDMETHODCALLTYPE* /*proceed*/)(ULONG_PTR),
                                   ULONG_PTR /*token*/) {
  if (dc == nullptr || bounds == nullptr) return E_INVALIDARG;
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  return AnswerCall([&] {
    Extent size = ToTwipsOfHimetric(place_.Extent());
    if (const MetafileHandle picture = LastSeen()) {
      DrawPicture(picture.get(), size, dc, *bounds);
      return;
    }
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

STDMETHODIMP YearPlanControl::GetRect(DWORD aspect, LPRECTL rect) {
  if (rect == nullptr) return E_POINTER;
  if (aspect != DVASPECT_CONTENT && aspect != DVASPECT_OPAQUE) return DV_E_DVASPECT;
  const SIZEL size = place_.Extent();
  *rect = {0, 0, size.cx, size.cy};
  return S_OK;
}

STDMETHODIMP YearPlanControl::GetViewStatus(DWORD* status) {
  if (status == nullptr) return E_POINTER;
  *status = VIEWSTATUS_OPAQUE;
  return S_OK;
}

STDMETHODIMP YearPlanControl::QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point,
                                            LONG /*close*/, DWORD* hit) {
  if (bounds == nullptr || hit == nullptr) return E_POINTER;
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  *hit = ::PtInRect(bounds, point) ? HITRESULT_HIT : HITRESULT_OUTSIDE;
  return S_OK;
}

STDMETHODIMP YearPlanControl::QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT rect,
                                           LONG /*close*/, DWORD* hit) {
  if (bounds == nullptr || rect == nullptr || hit == nullptr) return E_POINTER;
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  RECT common{};
  *hit = ::IntersectRect(&common, bounds, rect) ? HITRESULT_HIT : HITRESULT_OUTSIDE;
  return S_OK;
}

STDMETHODIMP YearPlanControl::GetNaturalExtent(DWORD aspect, LONG /*index*/,
                                               DVTARGETDEVICE* /*device*/, HDC /*targetDc*/,
                                               DVEXTENTINFO* wanted, LPSIZEL size) {
  if (wanted == nullptr || size == nullptr) return E_POINTER;
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  // It fits every size; by itself it takes the one that it is first placed with.
  *size =
      wanted->dwExtentMode == DVEXTENT_CONTENT ? ControlPlace::FirstExtent : wanted->sizelProposed;
  return S_OK;
}

}  // namespace velkor
