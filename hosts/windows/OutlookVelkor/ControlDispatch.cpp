// hosts/windows/OutlookVelkor/ControlDispatch.cpp: calls by name, events and what the control says
// of itself.
#include "hosts/windows/OutlookVelkor/YearPlanControl.h"

namespace velkor {

STDMETHODIMP YearPlanControl::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 1;
  return S_OK;
}

STDMETHODIMP YearPlanControl::GetTypeInfo(UINT index, LCID /*locale*/, ITypeInfo** info) {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  if (index != 0) return DISP_E_BADINDEX;
  return typeInfo_.CopyTo(info);
}

STDMETHODIMP YearPlanControl::GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID /*locale*/,
                                            DISPID* members) {
  if (id != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  return ::DispGetIDsOfNames(typeInfo_.Get(), names, count, members);
}

STDMETHODIMP YearPlanControl::Invoke(DISPID member, REFIID id, LCID /*locale*/, WORD flags,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                     UINT* badArgument) {
  if (id != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  const EntryScope entry(life_.Owner());
  ::SetErrorInfo(0, nullptr);
  return typeInfo_->Invoke(static_cast<IYearPlan*>(this), member, flags, parameters, result,
                           exception, badArgument);
}

STDMETHODIMP YearPlanControl::GetClassInfo(ITypeInfo** info) {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  ComPtr<ITypeLib> library;
  UINT index = 0;
  const HRESULT result = typeInfo_->GetContainingTypeLib(&library, &index);
  return FAILED(result) ? result : library->GetTypeInfoOfGuid(CLSID_YearPlan, info);
}

STDMETHODIMP YearPlanControl::GetGUID(DWORD kind, GUID* id) {
  if (id == nullptr) return E_POINTER;
  *id = kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID ? DIID__YearPlanEvents : GUID_NULL;
  return kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID ? S_OK : E_INVALIDARG;
}

/// Stored properties do no harm, whoever wrote them; methods delete categories, which no page that
/// the user does not trust may do.
STDMETHODIMP YearPlanControl::GetInterfaceSafetyOptions(REFIID id, DWORD* supported,
                                                        DWORD* enabled) {
  if (supported == nullptr || enabled == nullptr) return E_POINTER;
  const bool forData = id == __uuidof(IPersistPropertyBag) || id == __uuidof(IPersistStreamInit);
  *supported = forData ? INTERFACESAFE_FOR_UNTRUSTED_DATA : 0;
  *enabled = *supported;
  ComPtr<IUnknown> known;
  return QueryInterface(id, &known);
}

STDMETHODIMP YearPlanControl::SetInterfaceSafetyOptions(REFIID id, DWORD mask, DWORD enabled) {
  DWORD supported = 0;
  DWORD now = 0;
  const HRESULT result = GetInterfaceSafetyOptions(id, &supported, &now);
  if (FAILED(result)) return result;
  return (mask & enabled & ~supported) == 0 ? S_OK : E_FAIL;
}

}  // namespace velkor
