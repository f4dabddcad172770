// tests/platform/windows/FakeAutomation.h: objects that answer calls by name, and count them.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/windows/com/Variant.h"
#include "values/Error.h"

namespace velkor {

/// The component object model for as long as it lives.
struct Apartment {
  Apartment() { ::OleInitialize(nullptr); }
  ~Apartment() { ::OleUninitialize(); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
};

/// One call as it reached an object: arguments in the caller's order.
struct FakeCall {
  WORD flags = 0;
  std::vector<VARIANT*> arguments;

  bool Puts() const { return (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0; }
  Variant Argument(std::size_t index) const {
    Variant copy;
    ::VariantCopy(copy.Out(), arguments.at(index));
    return copy;
  }
};

/// The program behind its objects.
struct FakeProgram {
  int lookups = 0;
  int invokes = 0;
  /// "Class.Member" of each call.
  std::vector<std::string> log;
  /// Asked before each call; what is no success is the answer.
  std::function<HRESULT()> refuse;
  std::map<std::string, DISPID> ids;

  /// Different in each class, but for the member that all of them have.
  DISPID Identify(const std::string& className, const std::string& member) {
    constexpr DISPID ClassMember = 0xF00A;
    if (member == "Class") return ClassMember;
    return ids.try_emplace(className + "." + member, static_cast<DISPID>(ids.size()) + 1)
        .first->second;
  }
};

/// What a program says about a failure (EXCEPINFO); a thrown HRESULT is a failure without words.
struct FakeFailure {
  HRESULT number;
  std::string text;
};

class FakeObject : public ComObject<IDispatch> {
 public:
  using Member = std::function<Variant(const FakeCall&)>;

  FakeObject(FakeProgram& program, std::string className)
      : program_(program), className_(std::move(className)) {}

  std::map<std::string, Member> members;
  /// Answers with events; no reference is held.
  IConnectionPointContainer* events = nullptr;

  /// A property that can be read only.
  template <typename Value>
  void Has(const std::string& member, Value value) {
    members[member] = [value](const FakeCall&) { return Variant(value); };
  }
  void HasObject(const std::string& member, ComPtr<FakeObject> object) {
    members[member] = [object](const FakeCall&) {
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
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT*) override {
    ++program_.invokes;
    if (program_.refuse) {
      if (const HRESULT refused = program_.refuse(); FAILED(refused)) return refused;
    }
    for (const auto& [name, member] : members) {
      if (program_.Identify(className_, name) != id) continue;
      program_.log.push_back(className_ + "." + name);
      FakeCall call{flags, {}};
      for (UINT i = parameters->cArgs; i-- > 0;) call.arguments.push_back(&parameters->rgvarg[i]);
      if (call.Puts() &&
          (parameters->cNamedArgs != 1 || *parameters->rgdispidNamedArgs != DISPID_PROPERTYPUT)) {
        return DISP_E_PARAMNOTOPTIONAL;
      }
      return Run(Member(member), call, result, exception);
    }
    return DISP_E_MEMBERNOTFOUND;
  }

 protected:
  void* FindOther(REFIID id) override {
    return id == __uuidof(IConnectionPointContainer) ? events : nullptr;
  }

 private:
  static HRESULT Run(const Member& member, const FakeCall& call, VARIANT* result,
                     EXCEPINFO* exception) {
    try {
      Variant answer = member(call);
      if (result != nullptr) answer.MoveTo(result);
      return S_OK;
    } catch (const FakeFailure& failure) {
      exception->scode = failure.number;
      exception->bstrDescription = Bstr(failure.text).Release();
      return DISP_E_EXCEPTION;
    } catch (HRESULT failure) {
      return failure;
    }
  }

  FakeProgram& program_;
  std::string className_;
};

inline ComPtr<FakeObject> MakeFake(FakeProgram& program, const std::string& className) {
  return ComPtr<FakeObject>(new FakeObject(program, className));
}

}  // namespace velkor
