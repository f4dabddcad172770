// hosts/yearplan/commands/SyncCommand.h: `yearplan sync`, addresses and server calendars brought up
// to date now.
#pragma once

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

namespace velkor {

struct SyncTask {
  /// All passwords are the first line of standard input.
  bool passwordFromInput = false;
  /// Certificates to trust this time: host to SHA-256.
  std::map<std::string, std::string> trusted = {};
};

/// Throws UsageError.
/// @param trust  each as HOST=SHA256
SyncTask ParseSyncTask(bool passwordFromInput, const std::vector<std::string>& trust);

/// Throws UsageError for a calendar that is neither a set nor an address.
void CheckCanBeSynchronised(const std::vector<std::string>& calendars);

/// Passwords come from standard input where that was wanted, else from the system's key store, else
/// the terminal is asked for them, and whether a certificate that nobody vouches for is trusted.
/// Throws Error when the set cannot be read.
/// @param out       a line for each calendar that is up to date
/// @param messages  why one is not, and the progress
/// @return the program's exit code: 0 all are up to date, 1 some are not, 3 something waits for the
/// user in the window
int Synchronise(const std::string& set, const SyncTask& task, std::ostream& out,
                std::ostream& messages);

}  // namespace velkor
