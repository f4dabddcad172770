// hosts/vkrSync/SyncReport.h: tells who started this program what happens, line by line.
#pragma once

#include "hosts/SyncMessages.h"

namespace velkor {

class SyncReport {
 public:
  /// Onto standard output at once. Ends the process when nobody hears it any more.
  void Tell(const SyncEvent& event) const;
};

}  // namespace velkor
