// hosts/yearplan/CacheFolders.h: the folders of calendars below the private cache folder.
#pragma once

#include <string>

namespace velkor {

/// The file's name for people, and a hash of its whole path.
std::string CacheFolderNameOf(const std::string& calendar);

/// Writes into a calendar's folder which calendar that is, unless it says so already. Cache files
/// in a folder that says nothing are removed: their texts may lack letters, "?" in their place.
void NoteCalendarOf(const std::string& folder, const std::string& calendar);

/// Removes the folders in which nothing has been written for 90 days and whose calendar is gone;
/// a folder that does not say which one it is of counts as such; and last good copies of calendars
/// that were made before that. What cannot be removed stays.
/// @param cacheFolder  as PrivateCacheFolder gives it
void RemoveOldCacheFolders(const std::string& cacheFolder);

}  // namespace velkor
