// tests/standin/CallFaults.cpp: faults of calls.
#include "tests/standin/CallFaults.h"

#include "values/Error.h"

namespace velkor {

void CallFaults::Meet(const std::string& kind, const std::string& member,
                      const std::function<void()>& onExit) const {
  const std::string full = kind + "." + member;
  if (exitIn == member || exitIn == full) {
    onExit();
    ::TerminateProcess(::GetCurrentProcess(), 1);
  }
  if (slow > 0 && member == "GetNext") ::Sleep(static_cast<DWORD>(slow));
  for (const std::string& asked : {member, full}) {
    if (const auto fault = failing.find(asked); fault != failing.end()) {
      throw Error(fault->second, full + " failed as a test asked for.");
    }
  }
}

}  // namespace velkor
