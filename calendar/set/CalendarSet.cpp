// calendar/set/CalendarSet.cpp: finding, adding, loading and replacing.
#include "calendar/set/CalendarSet.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>
#include <set>
#include <utility>

#include "calendar/ics/file/CalendarFile.h"
#include "calendar/ics/file/ShortHash.h"
#include "calendar/set/LocalPlaces.h"
#include "calendar/set/SetText.h"
#include "platform/posix/SaveAll.h"
#include "values/Error.h"
#include "values/Text.h"

namespace velkor {
namespace {

constexpr std::string_view Extension = ".yearplan";
constexpr const char* UnsavedFolder = "/unsaved";
/// Thousands of calendars have room.
constexpr qint64 LargestFile = qint64{4} << 20;
constexpr std::size_t IdLength = 8;

std::string AbsolutePath(const std::string& path) {
  return QDir::cleanPath(QFileInfo(QString::fromStdString(path)).absoluteFilePath()).toStdString();
}

[[noreturn]] void Fail(long number, const std::string& path, const std::string& why) {
  throw Error(number, "The set of calendars " + path + " " + why, "Calendar");
}

std::string BytesOf(const std::string& path) {
  const QFileInfo info(QString::fromStdString(path));
  if (!info.exists()) Fail(errors::FileNotFound, path, "does not exist.");
  if (!info.isFile()) Fail(errors::BadFileName, path, "is no ordinary file.");
  QFile file(info.filePath());
  if (!file.open(QIODevice::ReadOnly)) {
    Fail(errors::BadFileMode, path, "cannot be opened: " + file.errorString().toStdString() + ".");
  }
  const QByteArray bytes = file.read(LargestFile + 1);
  if (file.error() != QFileDevice::NoError) {
    Fail(errors::DeviceInputOutput, path,
         "cannot be read to its end: " + file.errorString().toStdString() + ".");
  }
  if (bytes.size() > LargestFile) Fail(errors::BadFileMode, path, "is larger than 4 MiB.");
  return bytes.toStdString();
}

void WriteNew(const std::string& path, const std::string& text) {
  QSaveFile file(QString::fromStdString(path));
  if (!OpenToSave(file) || !SaveAll(file, QByteArray::fromStdString(text))) {
    Fail(errors::DeviceInputOutput, path,
         "could not be saved: " + file.errorString().toStdString() + ".");
  }
}

}  // namespace

bool IsSetPath(std::string_view path) {
  return path.size() > Extension.size() &&
         SameName(path.substr(path.size() - Extension.size()), Extension);
}

const SetSource* FindSource(const CalendarSet& set, std::string_view id) {
  const auto found = std::find_if(set.sources.begin(), set.sources.end(),
                                  [&](const SetSource& source) { return source.id == id; });
  return found == set.sources.end() ? nullptr : &*found;
}

SetSource* FindSource(CalendarSet& set, std::string_view id) {
  return const_cast<SetSource*>(FindSource(std::as_const(set), id));
}

const SetSource* SourceOfPlace(const CalendarSet& set, const SetSource& place) {
  const std::string key = PlaceKeyOf(place);
  const auto found =
      std::find_if(set.sources.begin(), set.sources.end(),
                   [&](const SetSource& source) { return PlaceKeyOf(source) == key; });
  return found == set.sources.end() ? nullptr : &*found;
}

void GiveMissingIds(CalendarSet& set) {
  for (SetSource& source : set.sources) {
    if (!source.id.empty()) continue;
    std::string hash = ShortHash(PlaceKeyOf(source));
    while (FindSource(set, hash.substr(0, IdLength)) != nullptr) hash = ShortHash(hash);
    source.id = hash.substr(0, IdLength);
  }
}

std::string AddSource(CalendarSet& set, SetSource source) {
  if (const SetSource* const known = SourceOfPlace(set, source)) return known->id;
  source.id.clear();
  set.sources.push_back(std::move(source));
  GiveMissingIds(set);
  return set.sources.back().id;
}

CalendarSet LoadSet(const std::string& path) {
  const std::string absolute = AbsolutePath(path);
  return ParseSet(BytesOf(absolute), absolute);
}

void SaveSet(const CalendarSet& set) {
  const std::string text = SetText(set);
  if (QFileInfo::exists(QString::fromStdString(set.path))) {
    CalendarFile(set.path).Replace([&](const std::string&) { return text; });
  } else {
    WriteNew(set.path, text);
  }
}

CalendarSet UpdateSet(const std::string& path, const std::function<void(CalendarSet&)>& edit) {
  const std::string absolute = AbsolutePath(path);
  if (!QFileInfo::exists(QString::fromStdString(absolute))) {
    Fail(errors::FileNotFound, absolute, "does not exist any more.");
  }
  CalendarSet set;
  CalendarFile(absolute).Replace([&](const std::string& bytes) {
    const CalendarSet before = ParseSet(bytes, absolute);
    set = before;
    edit(set);
    return set == before ? bytes : SetText(set);
  });
  return set;
}

CalendarSet SetOf(const std::vector<SetSource>& sources, const std::string& dataFolder) {
  CalendarSet set;
  std::set<std::string> keys;
  for (const SetSource& source : sources) {
    AddSource(set, source);
    keys.insert(PlaceKeyOf(source));
  }
  std::string all;
  for (const std::string& key : keys) all.append(key).append("\n");
  const std::string folder = dataFolder + UnsavedFolder;
  set.path = folder + "/" + ShortHash(all) + std::string(Extension);
  if (QFileInfo::exists(QString::fromStdString(set.path))) return LoadSet(set.path);
  if (!QDir().mkpath(QString::fromStdString(folder))) {
    Fail(errors::PathNotFound, set.path, "could not be saved: its folder cannot be made.");
  }
  SaveSet(set);
  return set;
}

bool IsUnsavedSet(std::string_view path, std::string_view dataFolder) {
  return path.starts_with(std::string(dataFolder) + UnsavedFolder + "/");
}

}  // namespace velkor
