// hosts/windows/OutlookVelkor/ControlPersistence.cpp: properties from and to the container.
#include "hosts/windows/OutlookVelkor/ControlFile.h"
#include "hosts/windows/OutlookVelkor/PropertyBags.h"
#include "hosts/windows/OutlookVelkor/YearPlanControl.h"
#include "platform/windows/com/ComError.h"
#include "platform/windows/com/Variant.h"

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

/// Throws Error, and changes nothing then.
void YearPlanControl::TakeFrom(PropertyBag& bag) {
  const StockValues stock = ReadStockValues(bag);
  plan_.ReadProperties(bag);
  stock_.Take(stock);
  Dress();
  dirty_ = false;
}

HRESULT YearPlanControl::ReadFrom(PropertyBag& bag) {
  return AnswerCall([&] {
    TakeFrom(bag);
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
  return AnswerCall([&] {
    storage_.InitNew(*storage);
    lastPicture_.InitNew(*storage);
    // The storage has nothing yet that could be loaded.
    dirty_ = true;
  });
}

/// A document that is only looked at needs no calendar program.
STDMETHODIMP YearPlanControl::Load(IStorage* storage) {
  if (storage == nullptr) return E_POINTER;
  return AnswerCall([&] {
    storage_.Load(*storage, [this](IStream& stream) {
      MemoryBag properties;
      properties.Load(stream);
      TakeFrom(properties);
    });
    lastPicture_.Load(*storage);
  });
}

/// Beside the properties, as the control looks now.
void YearPlanControl::KeepPicture(IStorage& storage, bool sameAsLoad) {
  if (!LastSeen()) lastPicture_.Update(*this);
  lastPicture_.Save(storage, sameAsLoad);
}

STDMETHODIMP YearPlanControl::Save(IStorage* storage, BOOL sameAsLoad) {
  if (storage == nullptr) return E_POINTER;
  return AnswerCall([&] {
    storage_.Save(*storage, sameAsLoad != FALSE,
                  [this](IStream& stream) { Stored().Save(stream); });
    KeepPicture(*storage, sameAsLoad != FALSE);
  });
}

STDMETHODIMP YearPlanControl::SaveCompleted(IStorage* storage) {
  return AnswerCall([&] {
    if (storage_.SaveCompleted(storage)) dirty_ = false;
    lastPicture_.SaveCompleted(storage);
  });
}

STDMETHODIMP YearPlanControl::HandsOffStorage() {
  return AnswerCall([&] {
    storage_.HandsOff();
    lastPicture_.HandsOff();
  });
}

STDMETHODIMP YearPlanControl::Load(LPCOLESTR file, DWORD /*mode*/) {
  if (file == nullptr) return E_POINTER;
  const EntryScope entry(life_.Owner());
  const std::wstring path(file);
  ComPtr<IStorage> storage;
  HRESULT result = Answer([&] { storage = ReadStorageFile(path); });
  if (SUCCEEDED(result)) result = Load(storage.Get());
  if (SUCCEEDED(result)) file_ = path;
  return result;
}

STDMETHODIMP YearPlanControl::Save(LPCOLESTR file, BOOL remember) {
  return AnswerCall([&] {
    const std::wstring path = file != nullptr ? file : file_;
    if (path.empty()) throw Error(E_UNEXPECTED, "The planner was loaded from no file.", "YearPlan");
    WriteStorageFile(path, [this](IStorage& storage) {
      WriteContents(storage, [this](IStream& stream) { Stored().Save(stream); });
      KeepPicture(storage, false);
    });
    // A copy leaves the control with the file that it had.
    if (file != nullptr && !remember) return;
    file_ = path;
    dirty_ = false;
  });
}

STDMETHODIMP YearPlanControl::GetCurFile(LPOLESTR* file) {
  if (file == nullptr) return E_POINTER;
  *file = CopyForCaller(file_.empty() ? L"*.*" : file_);
  if (*file == nullptr) return E_OUTOFMEMORY;
  return file_.empty() ? S_FALSE : S_OK;
}

}  // namespace velkor
