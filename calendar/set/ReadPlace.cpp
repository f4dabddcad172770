// calendar/set/ReadPlace.cpp: files and their copies, and the windows of each kind of calendar.
#include "calendar/set/ReadPlace.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <set>
#include <utility>

#include "calendar/ics/file/CalendarFile.h"
#include "calendar/ics/file/ShortHash.h"
#include "calendar/mirror/Mirror.h"
#include "calendar/mirror/ReadMirror.h"
#include "calendar/set/LocalPlaces.h"
#include "platform/posix/SaveAll.h"
#include "values/Error.h"

namespace velkor {
namespace {

DateWindow WindowFor(const SetSource& source, const DateWindow& window) {
  constexpr int MoreDays = 3653;
  if (!source.background) return window;
  const Date from = window.from.AddDays(-MoreDays);
  const Date to = window.to.AddDays(MoreDays);
  return {from.IsValid() ? from : window.from, to.IsValid() ? to : window.to};
}

QString CopyOf(const std::string& path, const std::string& folder) {
  return QString::fromStdString(folder + "/" + ShortHash(path) + ".ics");
}

/// Copies a file that was read whole in the state `mark`, unless the copy is one of that state. A
/// disk that does not take it leaves the old copy.
void KeepCopy(const std::string& path, const FileMark& mark, const std::string& folder) {
  const QFileInfo original(QString::fromStdString(path));
  const QFileInfo copy(CopyOf(path, folder));
  const QDateTime modified = original.lastModified();
  if (copy.exists() && copy.size() == original.size() && copy.lastModified() == modified) return;
  QFile from(original.filePath());
  QSaveFile to(copy.filePath());
  if (!QDir().mkpath(QString::fromStdString(folder)) || !from.open(QIODevice::ReadOnly) ||
      !OpenToSave(to)) {
    return;
  }
  to.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
  const QByteArray bytes = from.readAll();
  if (!WriteAllOf(to, bytes)) return;
  to.setFileTime(modified, QFileDevice::FileModificationTime);
  if (CalendarFile(path).Mark() == mark) to.commit();
}

ParsedCalendar ReadFile(const std::string& path, const std::string& copies,
                        const DateWindow& window) {
  try {
    const auto mark = CalendarFile(path).Mark();
    ParsedCalendar calendar = ParseIcsFile(path, window);
    if (mark && !copies.empty()) KeepCopy(path, *mark, copies);
    return calendar;
  } catch (const Error& error) {
    const QString copy = copies.empty() ? QString() : CopyOf(path, copies);
    if (copy.isEmpty() || !QFileInfo::exists(copy)) throw;
    ParsedCalendar calendar = ParseIcsFile(copy.toStdString(), window);
    calendar.trouble = error.Description();
    return calendar;
  }
}

[[noreturn]] void FailUnfetched(const SetSource& source) {
  throw Error(errors::CalendarFailed,
              "The calendar at " + source.location + " has not been fetched yet.", "Calendar");
}

}  // namespace

std::string CopiesFolderOf(const std::string& cacheFolder) {
  return cacheFolder + "/copies";
}

ParsedCalendar ReadPlace(const SetSource& source, const PlaceFolders& folders,
                         const DateWindow& window) {
  const std::string path = LocalCalendarOf(source, folders.data);
  const DateWindow wanted = WindowFor(source, window);
  switch (source.kind) {
    case SourceKind::File:
      break;
    case SourceKind::Address:
      if (!QFileInfo::exists(QString::fromStdString(path))) FailUnfetched(source);
      return ParseIcsFile(path, wanted);
    case SourceKind::Server: {
      ParsedCalendar calendar = ReadMirror(path, wanted);
      if (calendar.items.empty() && Mirror(path).State().synchronised == 0) FailUnfetched(source);
      return calendar;
    }
  }
  return ReadFile(path, folders.copies, wanted);
}

std::vector<const SetSource*> ShownSources(const CalendarSet& set) {
  std::vector<const SetSource*> shown;
  std::set<std::string> keys;
  for (const SetSource& source : set.sources) {
    const bool isFirst = keys.insert(PlaceKeyOf(source)).second;
    if (isFirst && source.shown && !source.background) shown.push_back(&source);
  }
  return shown;
}

}  // namespace velkor
