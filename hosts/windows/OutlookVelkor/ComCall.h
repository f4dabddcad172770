// hosts/windows/OutlookVelkor/ComCall.h: the boundary where an error becomes a result code.
#pragma once

#include <exception>
#include <new>
#include <string>

#include "platform/windows/ComObject.h"
#include "support/values/Error.h"

namespace velkor {

/// The result code of one of our errors: FACILITY_CONTROL with the number, as controls give them
/// (olectl.h, STD_CTL_SCODE); a number that is a result code already stays itself.
HRESULT ResultOf(const Error& error);
/// Leaves the text where the caller looks for it (SetErrorInfo).
void LeaveErrorInfo(REFIID id, const std::string& source, const std::string& description);

/// Runs a member of an interface; what it throws is told as error information.
/// @param id  of the interface
template <typename Work>
HRESULT ComCall(REFIID id, Work&& work) {
  try {
    work();
    return S_OK;
  } catch (const Error& error) {
    LeaveErrorInfo(id, error.Source(), error.Description());
    return ResultOf(error);
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (const std::exception& error) {
    LeaveErrorInfo(id, {}, error.what());
    return E_FAIL;
  }
}

}  // namespace velkor
