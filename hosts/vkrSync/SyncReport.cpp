// hosts/vkrSync/SyncReport.cpp: events to standard output.
#include "hosts/vkrSync/SyncReport.h"

#include <cstdio>
#include <cstdlib>

namespace velkor {

void SyncReport::Tell(const SyncEvent& event) const {
  const std::string line = LineOf(event) + "\n";
  const bool told = std::fwrite(line.data(), 1, line.size(), stdout) == line.size();
  if (!told || std::fflush(stdout) != 0) std::_Exit(1);
}

}  // namespace velkor
