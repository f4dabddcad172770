// hosts/yearplan/CacheFolders.cpp: names of cache folders, and which of them are of no use.
#include "hosts/yearplan/CacheFolders.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "calendar/ics/file/ShortHash.h"
#include "calendar/set/ReadPlace.h"
#include "platform/desktop/DesktopFiles.h"

namespace velkor {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t HashLength = 16;
constexpr std::chrono::hours LongestUnused{24 * 90};
constexpr const char* NoteName = "/calendar";

std::string PathOf(const std::string& calendar) {
  const QFileInfo file(QString::fromStdString(calendar));
  const QString canonical = file.canonicalFilePath();
  return (canonical.isEmpty() ? file.absoluteFilePath() : canonical).toStdString();
}

/// Whether a folder is one of a calendar, by its name.
bool IsOfACalendar(const std::string& name) {
  if (name.size() <= HashLength || name[name.size() - HashLength - 1] != ' ') return false;
  return std::all_of(name.end() - HashLength, name.end(),
                     [](char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'); });
}

/// When anything was last written into a folder.
fs::file_time_type LastWritten(const fs::path& folder) {
  fs::file_time_type last = fs::last_write_time(folder);
  for (const auto& entry : fs::directory_iterator(folder)) {
    last = std::max(last, entry.last_write_time());
  }
  return last;
}

bool IsGone(const fs::path& folder) {
  const auto calendar = DesktopFiles().Read(folder.string() + NoteName);
  return !calendar || !fs::exists(*calendar);
}

/// What cannot be removed stays.
void RemoveCacheFiles(const std::string& folder) {
  std::error_code end;
  for (fs::directory_iterator at(folder, end); !end && at != fs::directory_iterator();
       at.increment(end)) {
    std::error_code ignored;
    if (at->path().extension() == ".tmp") fs::remove(at->path(), ignored);
  }
}

/// Copies that were not made anew for that long: whoever still reads their calendars makes them
/// again. What cannot be removed stays.
void RemoveOldCopies(const std::string& folder) {
  const QDateTime oldest = QDateTime::currentDateTime().addSecs(
      -std::chrono::duration_cast<std::chrono::seconds>(LongestUnused).count());
  for (const QFileInfo& copy : QDir(QString::fromStdString(folder)).entryInfoList(QDir::Files)) {
    if (copy.metadataChangeTime() < oldest) QFile::remove(copy.filePath());
  }
}

}  // namespace

std::string CacheFolderNameOf(const std::string& calendar) {
  constexpr int LongestName = 40;
  const QFileInfo file(QString::fromStdString(calendar));
  return file.completeBaseName().left(LongestName).toStdString() + " " +
         ShortHash(PathOf(calendar)).substr(0, HashLength);
}

void NoteCalendarOf(const std::string& folder, const std::string& calendar) {
  const std::string path = PathOf(calendar);
  const auto noted = DesktopFiles().Read(folder + NoteName);
  if (!noted) RemoveCacheFiles(folder);
  if (noted != path) std::ofstream(folder + NoteName) << path;
}

void RemoveOldCacheFolders(const std::string& cacheFolder) {
  RemoveOldCopies(CopiesFolderOf(cacheFolder));
  const fs::file_time_type oldest = fs::file_time_type::clock::now() - LongestUnused;
  std::error_code end;
  for (fs::directory_iterator at(cacheFolder, end); !end && at != fs::directory_iterator();
       at.increment(end)) {
    const fs::path folder = at->path();
    try {
      const bool isFolder = at->symlink_status().type() == fs::file_type::directory;
      if (!isFolder || !IsOfACalendar(folder.filename().string())) continue;
      if (LastWritten(folder) < oldest && IsGone(folder)) fs::remove_all(folder);
    } catch (const fs::filesystem_error&) {
      // Another program may be removing it.
    }
  }
}

}  // namespace velkor
