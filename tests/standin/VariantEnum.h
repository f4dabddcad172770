// tests/standin/VariantEnum.h: the objects of a collection one after the other, as `For
// Each` takes them; part of the calendar program for tests, never shipped.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "platform/windows/com/Variant.h"

namespace velkor {

class VariantEnum : public ComObject<IEnumVARIANT> {
 public:
  explicit VariantEnum(std::vector<ComPtr<IDispatch>> objects) : objects_(std::move(objects)) {}

  STDMETHODIMP Next(ULONG count, VARIANT* values, ULONG* fetched) override {
    ULONG given = 0;
    for (; given < count && next_ < objects_.size(); ++given, ++next_) {
      values[given] = {};
      values[given].vt = VT_DISPATCH;
      objects_[next_].CopyTo(&values[given].pdispVal);
    }
    if (fetched != nullptr) *fetched = given;
    return given == count ? S_OK : S_FALSE;
  }
  STDMETHODIMP Skip(ULONG count) override {
    const std::size_t left = objects_.size() - next_;
    next_ += count < left ? count : left;
    return count <= left ? S_OK : S_FALSE;
  }
  STDMETHODIMP Reset() override {
    next_ = 0;
    return S_OK;
  }
  STDMETHODIMP Clone(IEnumVARIANT** clone) override {
    const ComPtr<VariantEnum> copy(new VariantEnum(objects_));
    copy->next_ = next_;
    return copy.CopyTo(clone);
  }

 private:
  std::vector<ComPtr<IDispatch>> objects_;
  std::size_t next_ = 0;
};

/// The answer of a collection's `_NewEnum`.
inline Variant Enumerate(std::vector<ComPtr<IDispatch>> objects) {
  ComPtr<IUnknown> list(new VariantEnum(std::move(objects)));
  Variant answer;
  VARIANT* value = answer.Out();
  value->vt = VT_UNKNOWN;
  value->punkVal = list.Detach();
  return answer;
}

}  // namespace velkor
