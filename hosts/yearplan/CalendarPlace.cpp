// hosts/yearplan/CalendarPlace.cpp: a calendar's cache folder, on the disk or in memory.
#include "hosts/yearplan/CalendarPlace.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "hosts/yearplan/CacheFolders.h"
#include "values/Error.h"

namespace velkor {
namespace {

[[noreturn]] void Refuse(const std::string& folder) {
  const int code = errno;
  throw Error(FileErrorOf(code), "Cannot use the cache folder " + folder + ": " +
                                     std::generic_category().message(code));
}

}  // namespace

std::string CalendarEnvironment::Variable(std::string_view name) {
  if (name != "TMP") return DesktopEnvironment::Variable(name);
  if (folder_.empty()) Choose();
  return trouble_.empty() ? MakeFolder() : folder_;
}

const std::string& CalendarEnvironment::Trouble() {
  if (folder_.empty()) Choose();
  return trouble_;
}

void CalendarEnvironment::Choose() {
  try {
    folder_ = MakeFolder();
    if (!calendar_.empty()) NoteCalendarOf(folder_, calendar_);
    RemoveOldCacheFolders(PrivateCacheFolder());
  } catch (const Error& error) {
    folder_ = CalendarFiles::MemoryFolder;
    trouble_ = error.Description() + " (its place is named by " + CacheHomeVariable() +
               "). Years are kept in memory until the program ends.";
  }
}

/// Made again when it was removed meanwhile.
std::string CalendarEnvironment::MakeFolder() const {
  std::string folder = PrivateCacheFolder();
  if (!calendar_.empty()) {
    folder += "/" + CacheFolderNameOf(calendar_);
    if (::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) Refuse(folder);
  }
  if (::access(folder.c_str(), W_OK | X_OK) != 0) Refuse(folder);
  return folder;
}

}  // namespace velkor
