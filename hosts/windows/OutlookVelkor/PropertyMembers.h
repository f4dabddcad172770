// hosts/windows/OutlookVelkor/PropertyMembers.h: puts the control's properties behind the members
// of its dispatch interface.
#pragma once

#include <functional>
#include <string>

#include "control/YearPlan.h"
#include "platform/windows/com/ComError.h"
#include "platform/windows/com/ComObject.h"
#include "platform/windows/com/Variant.h"

namespace velkor {

/// `Object` with the property members of IYearPlan, which is one of its interfaces.
template <typename Object>
class PropertyMembers : public Object {
  using All = PlannerProperties;

 public:
  using Object::Object;

  STDMETHODIMP get_Folder(BSTR* value) override { return Give(&All::Folder, value); }
  STDMETHODIMP put_Folder(BSTR value) override { return Take(&All::Folder, value); }
  STDMETHODIMP get_AllEvents(VARIANT_BOOL* value) override { return Give(&All::AllEvents, value); }
  STDMETHODIMP put_AllEvents(VARIANT_BOOL value) override { return Take(&All::AllEvents, value); }
  STDMETHODIMP get_HideNonCategoryItems(VARIANT_BOOL* value) override {
    return Give(&All::HideNonCategoryItems, value);
  }
  STDMETHODIMP put_HideNonCategoryItems(VARIANT_BOOL value) override {
    return Take(&All::HideNonCategoryItems, value);
  }
  STDMETHODIMP get_DisplaySubject(VARIANT_BOOL* value) override {
    return Give(&All::DisplaySubject, value);
  }
  STDMETHODIMP put_DisplaySubject(VARIANT_BOOL value) override {
    return Take(&All::DisplaySubject, value);
  }
  STDMETHODIMP get_TitleName(BSTR* value) override { return Give(&All::TitleName, value); }
  STDMETHODIMP put_TitleName(BSTR value) override { return Take(&All::TitleName, value); }
  STDMETHODIMP get_AppointmentForm(BSTR* value) override {
    return Give(&All::AppointmentForm, value);
  }
  STDMETHODIMP put_AppointmentForm(BSTR value) override {
    return Take(&All::AppointmentForm, value);
  }

 protected:
  virtual YearPlan& Plan() = 0;
  /// Answers a call from outside: runs what it asks for and turns what that throws into a result.
  virtual HRESULT AnswerCall(const std::function<void()>& work) = 0;

 private:
  HRESULT Give(std::string All::*member, BSTR* value) {
    if (value == nullptr) return E_POINTER;
    return Answer([&] { *value = Bstr(Plan().Properties().*member).Release(); });
  }
  HRESULT Give(bool All::*member, VARIANT_BOOL* value) {
    if (value == nullptr) return E_POINTER;
    *value = Plan().Properties().*member ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
  }
  HRESULT Take(std::string All::*member, BSTR value) {
    return AnswerCall([&] { Plan().Set(member, ToUtf8(value)); });
  }
  HRESULT Take(bool All::*member, VARIANT_BOOL value) {
    return AnswerCall([&] { Plan().Set(member, value != VARIANT_FALSE); });
  }
};

}  // namespace velkor
