// platform/windows/com/Enumeration.h: enumerates what was gathered, for other programs.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/windows/com/ComObject.h"

namespace velkor {

/// Hands out references one after the other. `Give` copies an item for the caller.
template <typename Interface, typename Item, typename Kept, void (*Give)(const Kept&, Item&)>
class Enumeration : public ComObject<Interface> {
 public:
  explicit Enumeration(std::vector<Kept> items) : items_(std::move(items)) {}

  STDMETHODIMP Next(ULONG count, Item* items, ULONG* fetched) override {
    if (items == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
    ULONG given = 0;
    for (; given < count && at_ < items_.size(); ++given) Give(items_[at_++], items[given]);
    if (fetched != nullptr) *fetched = given;
    return given == count ? S_OK : S_FALSE;
  }
  STDMETHODIMP Skip(ULONG count) override {
    const std::size_t left = items_.size() - at_;
    at_ += std::min<std::size_t>(count, left);
    return count <= left ? S_OK : S_FALSE;
  }
  STDMETHODIMP Reset() override {
    at_ = 0;
    return S_OK;
  }
  STDMETHODIMP Clone(Interface** copy) override {
    if (copy == nullptr) return E_POINTER;
    auto* const clone = new Enumeration(items_);
    clone->at_ = at_;
    clone->AddRef();
    *copy = clone;
    return S_OK;
  }

 private:
  std::vector<Kept> items_;
  std::size_t at_ = 0;
};

}  // namespace velkor
