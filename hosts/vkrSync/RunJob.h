// hosts/vkrSync/RunJob.h: does one job over the network and tells how it goes.
#pragma once

#include "hosts/vkrSync/SyncReport.h"

namespace velkor {

/// Tells what stands in the way (a certificate, a password) before the outcome, which comes last.
/// @return whether it is done
bool RunJob(const SyncJob& job, const SyncReport& report);

}  // namespace velkor
