// hosts/windows/SetupHelper/PendingRemovals.h: takes back what the system was to remove when it
// starts again.
#pragma once

#include <filesystem>

namespace velkor {

/// Removes the entries of a folder and of what lies in it from the list that the system works off
/// when it starts (the value PendingFileRenameOperations). Those of others stay; a list that may
/// not be written stays as it is.
void ForgetPendingRemovals(const std::filesystem::path& folder);

}  // namespace velkor
