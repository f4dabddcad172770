// tests/standin/ServedObject.h: an object whose members are given one by one; part of the
// calendar program for tests, never shipped.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/windows/com/ComError.h"
#include "platform/windows/com/ConnectionPoint.h"
#include "platform/windows/com/NamedMembers.h"
#include "values/Error.h"

namespace velkor {

/// One call as it reached an object.
struct ServedCall : Call {
  ServedCall(const DISPPARAMS& arguments, WORD how) : Call(arguments, how), flags(how) {}
  WORD flags;
};

/// The program behind its objects, which it outlives: what it knows of all their calls.
struct ServedProgram {
  int lookups = 0;
  /// "Class.Member" of each call that was let in.
  std::vector<std::string> log;
  /// Asked before each call; what is no success is the answer.
  std::function<HRESULT()> refuse;
  /// A member is about to answer; what this throws is the answer.
  std::function<void(const std::string& className, const std::string& member)> onCall;
  std::map<std::string, DISPID> ids;

  /// Different in each class, but for the member that all of them have.
  DISPID Identify(const std::string& className, const std::string& member) {
    constexpr DISPID ClassMember = 0xF00A;
    const auto next = static_cast<DISPID>(ids.size()) + 1;
    return ids.try_emplace(className + "." + member, member == "Class" ? ClassMember : next)
        .first->second;
  }
  /// The member of a class with this identifier; empty for none.
  std::string NameOf(const std::string& className, DISPID id) const {
    for (const auto& [name, known] : ids) {
      if (known != id || !name.starts_with(className + ".")) continue;
      return name.substr(className.size() + 1);
    }
    return {};
  }
};

/// What a member throws is its answer: an Error with its words (EXCEPINFO), an HRESULT without.
class ServedObject : public ComObject<IDispatch, IConnectionPointContainer> {
 public:
  using Member = std::function<Variant(const ServedCall&)>;

  ServedObject(ServedProgram& program, std::string className)
      : program_(program), className_(std::move(className)) {}

  const std::string& ClassName() const { return className_; }

  std::map<std::string, Member> members;
  /// Whom its listeners connect to; whoever gives it lets them go. Null for no events.
  ComPtr<ConnectionPoint> events;
  /// Somebody asks for the events.
  std::function<void()> onListener;
  /// What lives as long as this.
  std::vector<std::shared_ptr<void>> held;

  /// A property that can be read only.
  template <typename Value>
  void Has(const std::string& member, Value value) {
    members[member] = [value](const ServedCall&) { return Variant(value); };
  }
  void HasObject(const std::string& member, ComPtr<ServedObject> object) {
    members[member] = [object](const ServedCall&) {
      return Variant(static_cast<IDispatch*>(object.Get()));
    };
  }

  STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* id) override {
    ++program_.lookups;
    const std::string member = ToUtf8(std::wstring_view(names[0]));
    if (!members.contains(member)) return DISP_E_UNKNOWNNAME;
    *id = program_.Identify(className_, member);
    return S_OK;
  }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                      EXCEPINFO* exception, UINT*) override {
    const HRESULT refused = program_.refuse ? program_.refuse() : S_OK;
    if (FAILED(refused)) return refused;
    const std::string name = program_.NameOf(className_, id);
    const auto member = members.find(name);
    if (member == members.end()) return DISP_E_MEMBERNOTFOUND;
    program_.log.push_back(className_ + "." + name);
    const ServedCall call(*arguments, flags);
    if (call.IsPut() &&
        (arguments->cNamedArgs != 1 || *arguments->rgdispidNamedArgs != DISPID_PROPERTYPUT)) {
      return DISP_E_PARAMNOTOPTIONAL;
    }
    return Run(name, Member(member->second), call, result, exception);
  }
  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
  STDMETHODIMP FindConnectionPoint(REFIID id, IConnectionPoint** found) override {
    if (onListener) onListener();
    return events ? velkor::FindConnectionPoint({events.Get()}, id, found) : CONNECT_E_NOCONNECTION;
  }

 private:
  HRESULT Run(const std::string& name, const Member& member, const ServedCall& call,
              VARIANT* result, EXCEPINFO* exception) {
    try {
      if (program_.onCall) program_.onCall(className_, name);
      Variant answer = member(call);
      if (result != nullptr) answer.MoveTo(result);
      return S_OK;
    } catch (const Error& error) {
      exception->scode = error.Number() == 0 ? 0 : ToResult(error);
      exception->bstrDescription = Bstr(error.Description()).Release();
      return DISP_E_EXCEPTION;
    } catch (HRESULT failure) {
      return failure;
    }
  }

  ServedProgram& program_;
  std::string className_;
};

inline ComPtr<ServedObject> MakeServed(ServedProgram& program, const std::string& className) {
  return ComPtr<ServedObject>(new ServedObject(program, className));
}

inline Variant ObjectAnswer(const ComPtr<ServedObject>& object) {
  return Variant(static_cast<IDispatch*>(object.Get()));
}

}  // namespace velkor
