// platform/windows/com/NamedMembers.cpp: from names to members, from errors to exceptions.
#include "platform/windows/com/NamedMembers.h"

#include <algorithm>

#include "platform/windows/com/ComError.h"
#include "values/Text.h"

namespace velkor {
namespace {

constexpr long ArgumentNotOptional = 449;

HRESULT Raise(EXCEPINFO* exception, HRESULT code, const std::string& source,
              const std::string& text) {
  if (exception == nullptr) return code;
  *exception = {};
  exception->scode = code;
  exception->bstrSource = Bstr(source).Release();
  exception->bstrDescription = Bstr(text).Release();
  return DISP_E_EXCEPTION;
}

}  // namespace

bool Call::Has(std::size_t index) const {
  if (index >= arguments_.cArgs) return false;
  const VARIANT& argument = arguments_.rgvarg[arguments_.cArgs - 1 - index];
  return !(argument.vt == VT_ERROR && argument.scode == DISP_E_PARAMNOTFOUND);
}

Variant Call::operator[](std::size_t index) const {
  if (!Has(index)) throw Error(ArgumentNotOptional, "An argument is missing.");
  Variant copy;
  ::VariantCopyInd(copy.Out(), &arguments_.rgvarg[arguments_.cArgs - 1 - index]);
  return copy;
}

HRESULT NamedMembers::Identify(LPOLESTR* names, UINT count, DISPID* ids) {
  if (const HRESULT refusal = OnLookup(); FAILED(refusal)) return refusal;
  if (count == 0) return E_INVALIDARG;
  std::fill_n(ids, count, DISPID_UNKNOWN);
  const std::string name = ToUtf8(std::wstring_view(names[0]));
  const auto found = std::ranges::find_if(
      kind_.members, [&](const Member& member) { return SameName(member.name, name); });
  if (found == kind_.members.end()) return DISP_E_UNKNOWNNAME;
  ids[0] = kind_.firstId + static_cast<DISPID>(found - kind_.members.begin());
  return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
}

const Member* NamedMembers::Find(DISPID id) const {
  if (id == DISPID_VALUE || id == DISPID_NEWENUM) {
    const char* name = id == DISPID_VALUE ? "Item" : "_NewEnum";
    const auto found = std::ranges::find_if(
        kind_.members, [&](const Member& member) { return SameName(member.name, name); });
    return found == kind_.members.end() ? nullptr : &*found;
  }
  const auto index = static_cast<std::size_t>(id - kind_.firstId);
  return id >= kind_.firstId && index < kind_.members.size() ? &kind_.members[index] : nullptr;
}

HRESULT NamedMembers::Answer(DISPID id, WORD flags, const DISPPARAMS* arguments, VARIANT* result,
                             EXCEPINFO* exception) {
  if (const HRESULT refusal = OnInvoke(); FAILED(refusal)) return refusal;
  const Member* member = Find(id);
  if (member == nullptr || arguments == nullptr) return DISP_E_MEMBERNOTFOUND;
  const Call call(*arguments, flags);
  if (call.IsPut() && !member->settable) return DISP_E_MEMBERNOTFOUND;
  if (arguments->cNamedArgs > (call.IsPut() ? 1U : 0U)) return DISP_E_NONAMEDARGS;
  try {
    OnCall(*member);
    Variant answer = member->answer(*this, call);
    if (result != nullptr) answer.MoveTo(result);
    return S_OK;
  } catch (const Error& error) {
    return Raise(exception, ToResult(error), kind_.name, error.Description());
  } catch (const std::exception& error) {
    return Raise(exception, E_FAIL, kind_.name, error.what());
  }
}

}  // namespace velkor
