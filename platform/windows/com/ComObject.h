// platform/windows/com/ComObject.h: the part that all objects share which other programs hold.
#pragma once

#include <atomic>
#include <tuple>
#include <utility>

#include "platform/windows/system/Win32.h"
// After windows.h.
#include <ocidl.h>
#include <olectl.h>
#include <wrl/client.h>

namespace velkor {

/// Keeps a reference of an object of the component object model.
template <typename Interface>
using ComPtr = Microsoft::WRL::ComPtr<Interface>;

// Interfaces are never destroyed through a pointer of theirs: Release does it.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// The objects of this program or library that somebody holds: the one count that the system asks a
/// library for (DllCanUnloadNow).
class LiveObject {
 public:
  LiveObject() { ++Counter(); }
  ~LiveObject() { --Counter(); }
  LiveObject(const LiveObject&) = delete;
  LiveObject& operator=(const LiveObject&) = delete;

  static long Count() { return Counter(); }
  /// Counts as an object that somebody holds (IClassFactory::LockServer).
  static void Lock(bool lock) { Counter() += lock ? 1 : -1; }

 private:
  static std::atomic<long>& Counter() {
    static constinit std::atomic<long> count = 0;
    return count;
  }
};

/// Counts its references and answers with the interfaces that it is made of; the first of them is
/// its identity. Made by `new` with no reference: whoever makes it takes the first one.
///
///   class Sink : public ComObject<IDispatch> {...};
///   ComPtr<Sink> sink(new Sink);
template <typename... Interfaces>
class ComObject : public Interfaces... {
 public:
  ComObject() = default;
  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;

  STDMETHODIMP QueryInterface(REFIID id, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = Find(id);
    if (*object == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) {
      // What an object does while it ends may ask for a reference and give it back.
      references_ = 1;
      delete this;
    }
    return left;
  }

 protected:
  virtual ~ComObject() = default;

  IUnknown* Identity() { return static_cast<First*>(this); }

  /// An interface beside those of the list, as the base of one of them or an event interface; null
  /// for none. No reference is added.
  virtual void* FindOther(REFIID /*id*/) { return nullptr; }

 private:
  using First = std::tuple_element_t<0, std::tuple<Interfaces...>>;

  void* Find(REFIID id) {
    if (id == __uuidof(IUnknown)) return static_cast<First*>(this);
    void* found = nullptr;
    ((found == nullptr && id == __uuidof(Interfaces) ? void(found = static_cast<Interfaces*>(this))
                                                     : void()),
     ...);
    return found != nullptr ? found : FindOther(id);
  }

  std::atomic<ULONG> references_ = 0;
  LiveObject live_;
};

/// A ComObject that may be a part of another object (aggregation): who asks one of its interfaces
/// for another one then asks the whole, and only Own() knows what this one has.
template <typename... Interfaces>
class AggregableObject : public ComObject<Interfaces...> {
  using Base = ComObject<Interfaces...>;

 public:
  /// @param outer  the whole, which holds Own() for as long as it lives; null for an object that
  ///   stands alone
  explicit AggregableObject(IUnknown* outer) : outer_(outer), own_(*this) {}

  STDMETHODIMP QueryInterface(REFIID id, void** object) override {
    return outer_ != nullptr ? outer_->QueryInterface(id, object)
                             : Base::QueryInterface(id, object);
  }
  STDMETHODIMP_(ULONG) AddRef() override {
    return outer_ != nullptr ? outer_->AddRef() : Base::AddRef();
  }
  STDMETHODIMP_(ULONG) Release() override {
    return outer_ != nullptr ? outer_->Release() : Base::Release();
  }

  /// The identity of this object alone; counts its references.
  IUnknown& Own() { return outer_ != nullptr ? own_ : *this->Identity(); }

 protected:
  /// What others take this for; counts the references to the whole.
  IUnknown& Whole() { return outer_ != nullptr ? *outer_ : *this->Identity(); }

 private:
  class OwnIdentity : public IUnknown {
   public:
    explicit OwnIdentity(AggregableObject& object) : object_(object) {}
    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
      if (object == nullptr) return E_POINTER;
      // Interfaces of a part count for the whole.
      if (id != __uuidof(IUnknown)) return object_.Base::QueryInterface(id, object);
      *object = this;
      AddRef();
      return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return object_.Base::AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return object_.Base::Release(); }

   private:
    AggregableObject& object_;
  };

  IUnknown* outer_;
  OwnIdentity own_;
};

#pragma GCC diagnostic pop

}  // namespace velkor
