// hosts/windows/OutlookVelkor/ControlPersistence.cpp: properties from and to the container.
#include "hosts/windows/OutlookVelkor/PropertyBags.h"
#include "hosts/windows/OutlookVelkor/YearPlanControl.h"
#include "platform/windows/com/ComError.h"

namespace velkor {

STDMETHODIMP YearPlanControl::GetClassID(CLSID* id) {
  if (id == nullptr) return E_POINTER;
  *id = CLSID_YearPlan;
  return S_OK;
}

/// A newly placed control keeps its defaults.
STDMETHODIMP YearPlanControl::InitNew() {
  return S_OK;
}

HRESULT YearPlanControl::ReadFrom(PropertyBag& bag) {
  return AnswerCall([&] {
    plan_.ReadProperties(bag);
    dirty_ = false;
    Start();
  });
}

STDMETHODIMP YearPlanControl::Load(IPropertyBag* bag, IErrorLog* log) {
  if (bag == nullptr) return E_POINTER;
  ComPropertyBag properties(*bag, log, false);
  return ReadFrom(properties);
}

STDMETHODIMP YearPlanControl::Save(IPropertyBag* bag, BOOL clearDirty, BOOL keepAll) {
  if (bag == nullptr) return E_POINTER;
  return Answer([&] {
    ComPropertyBag properties(*bag, nullptr, keepAll != FALSE);
    plan_.WriteProperties(properties);
    if (clearDirty) dirty_ = false;
  });
}

STDMETHODIMP YearPlanControl::Load(IStream* stream) {
  if (stream == nullptr) return E_POINTER;
  MemoryBag properties;
  const HRESULT result = Answer([&] { properties.Load(*stream); });
  return FAILED(result) ? result : ReadFrom(properties);
}

STDMETHODIMP YearPlanControl::Save(IStream* stream, BOOL clearDirty) {
  if (stream == nullptr) return E_POINTER;
  return Answer([&] {
    MemoryBag properties;
    plan_.WriteProperties(properties);
    properties.Save(*stream);
    if (clearDirty) dirty_ = false;
  });
}

}  // namespace velkor
