// hosts/windows/SetupHelper/Holders.h: finds out which programs keep files from being replaced.
#pragma once

#include <filesystem>
#include <map>
#include <span>
#include <string>

#include "platform/windows/system/Win32.h"

namespace velkor {

/// Whether a file is a running program or a loaded library, or is open in a way that nobody else
/// may write to it. One that is not there is not in use.
bool IsInUse(const std::filesystem::path& file);

/// The file names of the programs that use any of the files, by the number of the process: as the
/// system's restart manager knows them, and those that have one of the files loaded.
std::map<DWORD, std::wstring> HoldersOf(std::span<const std::filesystem::path> files);

}  // namespace velkor
