// hosts/windows/OutlookVelkor/ControlStock.cpp: the members that every control has, and what the
// container's surroundings make of the control.
#include "hosts/windows/OutlookVelkor/YearPlanControl.h"
#include "platform/windows/com/Variant.h"

namespace velkor {
namespace {

/// What a control without a font of its own is written in, told to who asks for a font.
Font UsualFont() {
  Font font;
  font.face = "Tahoma";
  font.size = 9;
  return font;
}

OLE_COLOR ToOle(Colour colour) {
  return static_cast<OLE_COLOR>(colour.value);
}

}  // namespace

STDMETHODIMP YearPlanControl::get_BackColor(OLE_COLOR* value) {
  if (value == nullptr) return E_POINTER;
  *value = stock_.BackColour().value_or(ambients_.back.value_or(ToOle(ControlLook().back)));
  return S_OK;
}

STDMETHODIMP YearPlanControl::put_BackColor(OLE_COLOR value) {
  return AnswerCall([&] { stock_.SetBackColour(value); });
}

STDMETHODIMP YearPlanControl::get_ForeColor(OLE_COLOR* value) {
  if (value == nullptr) return E_POINTER;
  *value = stock_.ForeColour().value_or(ambients_.fore.value_or(ToOle(ControlLook().fore)));
  return S_OK;
}

STDMETHODIMP YearPlanControl::put_ForeColor(OLE_COLOR value) {
  return AnswerCall([&] { stock_.SetForeColour(value); });
}

STDMETHODIMP YearPlanControl::get_Font(IFontDisp** value) {
  if (value == nullptr) return E_POINTER;
  *value = nullptr;
  return AnswerCall([&] {
    const ComPtr<IFont> font = stock_.FontObject(ambients_.font.value_or(UsualFont()));
    Check(font->QueryInterface(__uuidof(IFontDisp), reinterpret_cast<void**>(value)),
          "The font cannot be given");
  });
}

STDMETHODIMP YearPlanControl::put_Font(IFontDisp* value) {
  return AnswerCall([&] { stock_.SetFont(value, true); });
}

STDMETHODIMP YearPlanControl::putref_Font(IFontDisp* value) {
  return AnswerCall([&] { stock_.SetFont(value, false); });
}

STDMETHODIMP YearPlanControl::get_Enabled(VARIANT_BOOL* value) {
  if (value == nullptr) return E_POINTER;
  *value = stock_.Enabled() ? VARIANT_TRUE : VARIANT_FALSE;
  return S_OK;
}

STDMETHODIMP YearPlanControl::put_Enabled(VARIANT_BOOL value) {
  return AnswerCall([&] { stock_.SetEnabled(value != VARIANT_FALSE); });
}

/// Handles of windows have 32 bits that count, in programs of 64 bits too ("Interprocess
/// Communication Between 32-bit and 64-bit Applications").
STDMETHODIMP YearPlanControl::get_hWnd(OLE_HANDLE* value) {
  if (value == nullptr) return E_POINTER;
  *value = static_cast<OLE_HANDLE>(reinterpret_cast<ULONG_PTR>(place_.Window()));
  return S_OK;
}

STDMETHODIMP YearPlanControl::Refresh() {
  return AnswerCall([&] {
    place_.Repaint();
    listeners_.PictureChanged();
  });
}

STDMETHODIMP YearPlanControl::OnAmbientPropertyChange(DISPID property) {
  return AnswerCall([&] { FollowAmbients(property); });
}

void YearPlanControl::FollowAmbients(DISPID property) {
  const ComPtr<IOleClientSite> site = place_.Site();
  if (!site) return;
  const bool designed = ambients_.design;
  ambients_.Read(life_, site, property);
  if (site != place_.Site()) return;
  Dress();
  if (ambients_.design && !designed) timers_.clear();
  if (!ambients_.design && place_.IsInPlace()) Start();
}

/// Looks, speaks and listens as its own properties and the container say.
void YearPlanControl::Dress() {
  const ControlLook before = plan_.Elements().look;
  plan_.SetLocale(ambients_.locale);
  plan_.SetLook(LookOf(stock_.Wishes(), WishesOf(ambients_.back, ambients_.fore, ambients_.font)));
  place_.SetManner({.name = ambients_.displayName,
                    .usable = stock_.Enabled() && !ambients_.uiDead,
                    .hatching = ambients_.design && ambients_.hatching,
                    .grabHandles = ambients_.design && ambients_.grabHandles});
  if (plan_.Elements().look != before) {
    place_.LookChanged();
    listeners_.PictureChanged();
  }
}

}  // namespace velkor
