// model/CachePaths.h: where the cache file of a user, year and folder lies.
#pragma once

#include <string>
#include <string_view>

namespace velkor {

class Environment;
class Files;
class LocaleApi;

struct CachePaths {
  std::string cacheFile;
  /// Written first, then renamed over the cache file.
  std::string workFile;
};

/// Sum of the codes, in the system's ANSI code page, of all characters of a folder path but the
/// last.
long FolderChecksum(std::string_view folder, LocaleApi& locale);

/// Name of the cache file, made safe.
/// @param user    the calendar program's current user
/// @param folder  the Folder property: components joined by backslashes, or empty
std::string CacheFileName(std::string_view user, int year, std::string_view folder,
                          LocaleApi& locale);

/// Both paths in the temporary directory: the variable TMP; else "temp", relative to the current
/// directory, when "c:\temp" exists; else "c:".
CachePaths MakeCachePaths(const std::string& fileName, Environment& environment, Files& files);

}  // namespace velkor
