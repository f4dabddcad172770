// hosts/windows/OutlookVelkor/ComCall.cpp: result codes and error information.
#include "hosts/windows/OutlookVelkor/ComCall.h"

#include "platform/windows/Wide.h"

namespace velkor {

HRESULT ResultOf(const Error& error) {
  const auto number = static_cast<HRESULT>(error.Number());
  if (FAILED(number)) return number;
  constexpr HRESULT LargestCode = 0xFFFF;
  return number > 0 && number <= LargestCode ? MAKE_SCODE(SEVERITY_ERROR, FACILITY_CONTROL, number)
                                             : E_FAIL;
}

void LeaveErrorInfo(REFIID id, const std::string& source, const std::string& description) {
  ComPtr<ICreateErrorInfo> creation;
  if (FAILED(::CreateErrorInfo(&creation))) return;
  std::wstring from = ToWide(source.empty() ? "OutlookVelkor.YearPlan" : source);
  std::wstring text = ToWide(description);
  creation->SetGUID(id);
  creation->SetSource(from.data());
  creation->SetDescription(text.data());
  ComPtr<IErrorInfo> info;
  if (SUCCEEDED(creation.As(&info))) ::SetErrorInfo(0, info.Get());
}

}  // namespace velkor
