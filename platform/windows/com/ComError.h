// platform/windows/com/ComError.h: errors as they cross the boundary of the component object model.
#pragma once

#include <exception>
#include <string_view>

#include "platform/windows/system/Win32.h"
#include "values/Error.h"

namespace velkor {

/// Throws Error with the result's number when it is a failure.
/// @param doing  what failed, as the beginning of the description
void Check(HRESULT result, std::string_view doing);

/// The result that stands for an error: its number where that is a failure itself, else
/// FACILITY_CONTROL with the number, as automation languages expect it.
HRESULT ToResult(const Error& error);

/// Makes an error the caller's error information (SetErrorInfo) and gives its result.
HRESULT Refuse(const Error& error) noexcept;

/// Runs what an interface asks for: nothing is thrown to the caller.
template <typename Work>
HRESULT Answer(const Work& work) noexcept {
  try {
    work();
    return S_OK;
  } catch (const Error& error) {
    return Refuse(error);
  } catch (const std::exception& error) {
    return Refuse(Error(E_FAIL, error.what()));
  } catch (...) {
    return E_FAIL;
  }
}

}  // namespace velkor
