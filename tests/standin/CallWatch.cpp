// tests/standin/CallWatch.cpp: counts and faults of calls.
#include "tests/standin/CallWatch.h"

#include "values/Error.h"

namespace velkor {

void CallWatch::BeginCall(std::string_view kind, std::string_view member) {
  const std::string name(member);
  const std::string full = std::string(kind) + "." + name;
  ++calls_;
  ++members_[full];
  if (!exitIn_.empty() && (exitIn_ == name || exitIn_ == full)) {
    if (onExit) onExit();
    ::TerminateProcess(::GetCurrentProcess(), 1);
  }
  if (slow_ > 0 && name == "GetNext") ::Sleep(static_cast<DWORD>(slow_));
  for (const std::string& asked : {name, full}) {
    if (const auto fault = failing_.find(asked); fault != failing_.end()) {
      throw Error(fault->second, full + " failed as a test asked for.");
    }
  }
}

std::string CallWatch::MemberCounts() const {
  std::string text;
  for (const auto& [name, count] : members_) text += name + " " + std::to_string(count) + "\r\n";
  return text;
}

void CallWatch::ResetCounts() {
  calls_ = 0;
  lookups_ = 0;
  members_.clear();
}

void CallWatch::Fail(const std::string& member, std::int32_t code) {
  if (code == 0) {
    failing_.erase(member);
  } else {
    failing_[member] = code;
  }
}

void CallWatch::ClearFaults() {
  busy_ = 0;
  refused_ = 0;
  failing_.clear();
  exitIn_.clear();
  slow_ = 0;
}

}  // namespace velkor
