// tests/standin/CallFaults.h: what tests ask to be done to calls; part of the calendar program for
// tests, never shipped.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>

#include "platform/windows/com/ComObject.h"

namespace velkor {

/// A member is named "Subject" in every class, or "AppointmentItem.Subject" in one.
struct CallFaults {
  /// So many calls are put off.
  std::int32_t busy = 0;
  /// So many calls are refused before they reach an object.
  std::int32_t refused = 0;
  /// Milliseconds that every GetNext takes.
  std::int32_t slow = 0;
  /// The process ends in the middle of this member.
  std::string exitIn;
  /// Members that raise these numbers.
  std::map<std::string, std::int32_t> failing;

  HRESULT PutOff() { return busy > 0 && busy-- > 0 ? RPC_E_SERVERCALL_RETRYLATER : S_OK; }
  /// Ends the process, after `onExit`, waits or throws Error where that is asked for.
  void Meet(const std::string& kind, const std::string& member,
            const std::function<void()>& onExit) const;
};

/// Refuses calls as a program does that shows a dialog.
class CallFilter : public ComObject<IMessageFilter> {
 public:
  explicit CallFilter(CallFaults& faults) : faults_(faults) {}

  STDMETHODIMP_(DWORD)
  HandleInComingCall(DWORD, HTASK, DWORD, INTERFACEINFO* call) override {
    if (call == nullptr || call->iid != __uuidof(IDispatch)) return SERVERCALL_ISHANDLED;
    return faults_.refused > 0 && faults_.refused-- > 0 ? SERVERCALL_REJECTED
                                                        : SERVERCALL_ISHANDLED;
  }
  STDMETHODIMP_(DWORD) RetryRejectedCall(HTASK, DWORD, DWORD) override {
    return static_cast<DWORD>(-1);
  }
  STDMETHODIMP_(DWORD) MessagePending(HTASK, DWORD, DWORD) override {
    return PENDINGMSG_WAITDEFPROCESS;
  }

 private:
  CallFaults& faults_;
};

}  // namespace velkor
