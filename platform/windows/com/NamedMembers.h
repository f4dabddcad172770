// platform/windows/com/NamedMembers.h: objects that answer calls by name from a small table.
#pragma once

#include <cstddef>
#include <span>

#include "platform/windows/com/Variant.h"

namespace velkor {

/// The arguments of one call.
class Call {
 public:
  Call(const DISPPARAMS& arguments, WORD flags) : arguments_(arguments), flags_(flags) {}

  /// A property is set; its value is argument 0.
  bool IsPut() const { return (flags_ & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0; }
  bool Has(std::size_t index) const;
  /// In the order as written, from 0. Throws Error when it is absent.
  Variant operator[](std::size_t index) const;
  bool IsTrue(std::size_t index) const { return Has(index) && (*this)[index].ToBool(); }

 private:
  const DISPPARAMS& arguments_;
  WORD flags_;
};

class NamedMembers;

struct Member {
  const char* name;
  Variant (*answer)(NamedMembers& object, const Call& call);
  bool settable = false;
};

/// What all objects of one class share. Member identifiers count from `firstId`, so that no two
/// classes have one in common.
struct ObjectClass {
  const char* name;
  DISPID firstId;
  std::span<const Member> members;
};

/// What IDispatch of each object does.
class NamedMembers {
 public:
  /// @param kind  outlives this
  explicit NamedMembers(const ObjectClass& kind) : kind_(kind) {}
  virtual ~NamedMembers() = default;
  NamedMembers(const NamedMembers&) = delete;
  NamedMembers& operator=(const NamedMembers&) = delete;

 protected:
  HRESULT Identify(LPOLESTR* names, UINT count, DISPID* ids);
  HRESULT Answer(DISPID id, WORD flags, const DISPPARAMS* arguments, VARIANT* result,
                 EXCEPINFO* exception);
  /// A name is looked up; a failure is the answer.
  virtual HRESULT OnLookup() { return S_OK; }
  /// A member is called, whether or not it is there; a failure is the answer.
  virtual HRESULT OnInvoke() { return S_OK; }
  /// A member is about to answer; what this throws is its answer.
  virtual void OnCall(const Member& /*member*/) {}

 private:
  const Member* Find(DISPID id) const;

  const ObjectClass& kind_;
};

/// An object over `Members`, which is NamedMembers or derives from it.
template <typename Members, typename... More>
class NamedObject : public ComObject<IDispatch, More...>, public Members {
 public:
  using Members::Members;

  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
    return this->Identify(names, count, ids);
  }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                      EXCEPINFO* exception, UINT*) override {
    return this->Answer(id, flags, arguments, result, exception);
  }
};

template <typename Type>
struct ClassOfMember;
template <typename Class, typename Type>
struct ClassOfMember<Type Class::*> {
  using Owner = Class;
};

/// A member function `Variant (Object::*)(const Call&)` as an entry of a table.
template <auto Function>
Variant Bound(NamedMembers& object, const Call& call) {
  using Object = typename ClassOfMember<decltype(Function)>::Owner;
  return (static_cast<Object&>(object).*Function)(call);
}

/// What a call answers that has no object to give.
inline Variant Nothing() {
  return Variant(static_cast<IDispatch*>(nullptr));
}

}  // namespace velkor
