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
    // First, since nothing is changed where one cannot be read.
    const StockValues stock = ReadStockValues(bag);
    plan_.ReadProperties(bag);
    stock_.Take(stock);
    Dress();
    dirty_ = false;
    Start();
  });
}

/// What a stream holds of the control.
MemoryBag YearPlanControl::Stored() const {
  MemoryBag properties;
  plan_.WriteProperties(properties);
  stock_.Write(properties);
  return properties;
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
    stock_.Write(properties);
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
    Stored().Save(*stream);
    if (clearDirty) dirty_ = false;
  });
}

STDMETHODIMP YearPlanControl::GetSizeMax(ULARGE_INTEGER* size) {
  if (size == nullptr) return E_POINTER;
  return Answer([&] { size->QuadPart = Stored().Size(); });
}

STDMETHODIMP YearPlanControl::InitNew(IStorage* storage) {
  if (storage == nullptr) return E_POINTER;
  return AnswerCall([&] { storage_.InitNew(*storage); });
}

/// A document that is only looked at needs no calendar program.
STDMETHODIMP YearPlanControl::Load(IStorage* storage) {
  if (storage == nullptr) return E_POINTER;
  return AnswerCall([&] {
    storage_.Load(*storage, [this](IStream& stream) {
      MemoryBag properties;
      properties.Load(stream);
      plan_.ReadProperties(properties);
    });
    dirty_ = false;
  });
}

STDMETHODIMP YearPlanControl::Save(IStorage* storage, BOOL sameAsLoad) {
  return AnswerCall([&] {
    storage_.Save(storage, sameAsLoad != FALSE, [this](IStream& stream) { Stored().Save(stream); });
  });
}

STDMETHODIMP YearPlanControl::SaveCompleted(IStorage* storage) {
  return AnswerCall([&] {
    if (storage_.SaveCompleted(storage)) dirty_ = false;
  });
}

STDMETHODIMP YearPlanControl::HandsOffStorage() {
  return AnswerCall([&] { storage_.HandsOff(); });
}

}  // namespace velkor
