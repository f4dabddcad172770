// hosts/windows/OutlookVelkor/ControlPages.cpp: what lists of properties and their dialogs ask of
// the control.
#include <algorithm>

#include "hosts/windows/OutlookVelkor/PropertyPage.h"
#include "hosts/windows/OutlookVelkor/YearPlanControl.h"
#include "platform/windows/com/Variant.h"

namespace velkor {
namespace {

/// An array with one element, for an owner outside; null when there is no memory.
template <typename Element>
Element* OneElement(Element value) {
  auto* const element = static_cast<Element*>(::CoTaskMemAlloc(sizeof(Element)));
  if (element != nullptr) *element = value;
  return element;
}

/// What stands for a property's value where people choose.
std::string Shown(const PropertyValue& value) {
  if (const auto* truth = std::get_if<bool>(&value)) return *truth ? "True" : "False";
  if (const auto* number = std::get_if<std::int16_t>(&value)) return std::to_string(*number);
  const std::string& text = std::get<std::string>(value);
  return text.empty() ? "(default)" : text;
}

}  // namespace

/// The property with a member of the dispatch interface; null for none.
const Property* YearPlanControl::PropertyWith(DISPID member) const {
  BSTR name = nullptr;
  UINT count = 0;
  if (FAILED(typeInfo_->GetNames(member, &name, 1, &count)) || count == 0) return nullptr;
  const std::string key = ToUtf8(name);
  ::SysFreeString(name);
  const auto found = std::find_if(PropertyTable.begin(), PropertyTable.end(),
                                  [&](const Property& property) { return property.key == key; });
  return found == PropertyTable.end() ? nullptr : &*found;
}

STDMETHODIMP YearPlanControl::GetPages(CAUUID* pages) {
  if (pages == nullptr) return E_POINTER;
  *pages = {1, OneElement(PropertyPageClass)};
  return pages->pElems != nullptr ? S_OK : E_OUTOFMEMORY;
}

STDMETHODIMP YearPlanControl::GetDisplayString(DISPID member, BSTR* text) {
  if (text == nullptr) return E_POINTER;
  *text = nullptr;
  const Property* const property = PropertyWith(member);
  if (property == nullptr) return E_NOTIMPL;
  return Answer([&] { *text = Bstr(Shown(property->ValueIn(plan_.Properties()))).Release(); });
}

STDMETHODIMP YearPlanControl::MapPropertyToPage(DISPID member, CLSID* page) {
  if (page == nullptr) return E_POINTER;
  const bool has = PropertyWith(member) != nullptr;
  *page = has ? PropertyPageClass : CLSID_NULL;
  return has ? S_OK : PERPROP_E_NOPAGEAVAILABLE;
}

/// A text offers its default; other types are chosen from by themselves.
STDMETHODIMP YearPlanControl::GetPredefinedStrings(DISPID member, CALPOLESTR* texts,
                                                   CADWORD* cookies) {
  if (texts == nullptr || cookies == nullptr) return E_POINTER;
  *texts = {};
  *cookies = {};
  const Property* const property = PropertyWith(member);
  if (property == nullptr || !std::holds_alternative<std::string>(property->Default())) {
    return E_NOTIMPL;
  }
  return Answer([&] {
    LPOLESTR text = CopyForCaller(ToWide(Shown(property->Default())));
    *texts = {1, OneElement(text)};
    *cookies = {1, OneElement(DWORD{0})};
    if (text != nullptr && texts->pElems != nullptr && cookies->pElems != nullptr) return;
    ::CoTaskMemFree(text);
    ::CoTaskMemFree(texts->pElems);
    ::CoTaskMemFree(cookies->pElems);
    *texts = {};
    *cookies = {};
    throw Error(E_OUTOFMEMORY, "There is no memory for the texts");
  });
}

STDMETHODIMP YearPlanControl::GetPredefinedValue(DISPID member, DWORD cookie, VARIANT* value) {
  if (value == nullptr) return E_POINTER;
  ::VariantInit(value);
  const Property* const property = PropertyWith(member);
  if (property == nullptr || cookie != 0) return E_INVALIDARG;
  const PropertyValue standing = property->Default();
  const auto* const text = std::get_if<std::string>(&standing);
  if (text == nullptr) return E_INVALIDARG;
  return Answer([&] { Variant(*text).MoveTo(value); });
}

STDMETHODIMP YearPlanControl::GetProperties(PlannerProperties* properties) {
  if (properties == nullptr) return E_POINTER;
  return Answer([&] { *properties = plan_.Properties(); });
}

STDMETHODIMP YearPlanControl::SetProperty(const Property* property, const PropertyValue* value) {
  if (property == nullptr || value == nullptr) return E_POINTER;
  return AnswerCall([&] { plan_.Set(property->member, *value); });
}

/// The container's own dialog, else one of the system.
HRESULT YearPlanControl::ShowProperties(HWND owner) {
  ComPtr<IOleControlSite> site;
  if (place_.Site()) place_.Site().As(&site);
  const HRESULT shown =
      site ? life_.Tell(site, [](IOleControlSite& told) { return told.ShowPropertyFrame(); })
           : E_NOTIMPL;
  if (SUCCEEDED(shown)) return shown;
  const ModalScope modal(life_.Owner());
  return ShowPropertyFrame(*static_cast<IYearPlan*>(this),
                           modal.Window() != nullptr ? modal.Window() : owner);
}

}  // namespace velkor
