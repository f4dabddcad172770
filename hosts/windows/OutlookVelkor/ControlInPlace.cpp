// hosts/windows/OutlookVelkor/ControlInPlace.cpp: what the container asks of the control's window.
#include "hosts/windows/OutlookVelkor/YearPlanControl.h"

namespace velkor {

STDMETHODIMP YearPlanControl::GetWindow(HWND* window) {
  if (window == nullptr) return E_POINTER;
  *window = place_.Window();
  return *window != nullptr ? S_OK : E_FAIL;
}

STDMETHODIMP YearPlanControl::InPlaceDeactivate() {
  return AnswerCall([&] { place_.Close(); });
}

STDMETHODIMP YearPlanControl::UIDeactivate() {
  return AnswerCall([&] { place_.UiDeactivate(); });
}

STDMETHODIMP YearPlanControl::SetObjectRects(LPCRECT place, LPCRECT clip) {
  if (place == nullptr) return E_POINTER;
  return AnswerCall([&] { place_.SetRects(*place, clip); });
}

STDMETHODIMP YearPlanControl::TranslateAccelerator(LPMSG message) {
  if (message == nullptr) return E_POINTER;
  const EntryScope entry(life_.Owner());
  return place_.TranslateKey(*message);
}

STDMETHODIMP YearPlanControl::EnableModeless(BOOL enable) {
  return AnswerCall([&] { place_.SetModeless(enable != FALSE); });
}

}  // namespace velkor
