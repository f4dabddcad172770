// tests/standin/CallWatch.h: counts the calls, and does to them what a test asked for; part
// of the calendar program for tests, never shipped.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "platform/windows/com/ComObject.h"

namespace velkor {

/// A member is named "Subject" in every class, or "AppointmentItem.Subject" in one.
class CallWatch {
 public:
  void CountLookup() { ++lookups_; }
  /// Counts a call, and then ends the process, waits or throws Error where that is asked for.
  void BeginCall(std::string_view kind, std::string_view member);
  /// Whether this call is one of those that are put off.
  bool PutsOff() { return busy_ > 0 && busy_-- > 0; }
  /// Whether this call is one of those that are refused.
  bool Refuses() { return refused_ > 0 && refused_-- > 0; }

  std::int32_t Calls() const { return calls_; }
  std::int32_t Lookups() const { return lookups_; }
  /// A line "Class.Member count" for each member called.
  std::string MemberCounts() const;
  void ResetCounts();

  /// So many calls by name are put off, or refused; lookups of names are calls, too.
  void PutOff(std::int32_t calls) { busy_ = calls; }
  void Refuse(std::int32_t calls) { refused_ = calls; }
  /// Every call of the member raises this number until it is set to 0.
  void Fail(const std::string& member, std::int32_t code);
  /// The process ends in the middle of this member.
  void ExitIn(const std::string& member) { exitIn_ = member; }
  /// Every GetNext takes so long.
  void Slow(std::int32_t milliseconds) { slow_ = milliseconds; }
  void ClearFaults();

  /// Called before the process ends so. What it takes back, the system would by itself, but Wine
  /// hands out a class for ever that a process which is no more has registered.
  std::function<void()> onExit;

 private:
  std::int32_t calls_ = 0;
  std::int32_t lookups_ = 0;
  std::map<std::string, std::int32_t> members_;
  std::int32_t busy_ = 0;
  std::int32_t refused_ = 0;
  std::map<std::string, std::int32_t> failing_;
  std::string exitIn_;
  std::int32_t slow_ = 0;
};

/// Refuses calls by name; references that are counted pass always. Calls are not put off here:
/// Wine lets such calls through (SERVERCALL_RETRYLATER), so the objects answer so themselves.
class CallFilter : public ComObject<IMessageFilter> {
 public:
  explicit CallFilter(CallWatch& watch) : watch_(watch) {}

  STDMETHODIMP_(DWORD)
  HandleInComingCall(DWORD, HTASK, DWORD, INTERFACEINFO* call) override {
    if (call == nullptr || call->iid != __uuidof(IDispatch)) return SERVERCALL_ISHANDLED;
    return watch_.Refuses() ? SERVERCALL_REJECTED : SERVERCALL_ISHANDLED;
  }
  STDMETHODIMP_(DWORD) RetryRejectedCall(HTASK, DWORD, DWORD) override {
    return static_cast<DWORD>(-1);
  }
  STDMETHODIMP_(DWORD) MessagePending(HTASK, DWORD, DWORD) override {
    return PENDINGMSG_WAITDEFPROCESS;
  }

 private:
  CallWatch& watch_;
};

}  // namespace velkor
