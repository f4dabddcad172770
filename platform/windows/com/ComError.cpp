// platform/windows/com/ComError.cpp: results, numbers and error information.
#include "platform/windows/com/ComError.h"

#include <string>

#include "platform/windows/com/Variant.h"

namespace velkor {

void Check(HRESULT result, std::string_view doing) {
  if (SUCCEEDED(result)) return;
  throw Error(result, std::string(doing) + ": " + SystemMessage(static_cast<DWORD>(result)));
}

HRESULT ToResult(const Error& error) {
  const long number = error.Number();
  if (number < 0) return static_cast<HRESULT>(number);
  return number > 0 && number <= 0xFFFF
             ? MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, static_cast<unsigned long>(number))
             : E_FAIL;
}

HRESULT Refuse(const Error& error) noexcept {
  try {
    ComPtr<ICreateErrorInfo> made;
    if (SUCCEEDED(::CreateErrorInfo(&made))) {
      made->SetDescription(Bstr(error.Description()).Get());
      made->SetSource(Bstr(error.Source()).Get());
      ComPtr<IErrorInfo> info;
      if (SUCCEEDED(made.As(&info))) ::SetErrorInfo(0, info.Get());
    }
  } catch (const std::exception&) {
    // The result is told without words then.
  }
  return ToResult(error);
}

}  // namespace velkor
