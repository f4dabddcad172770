// model/CacheFile.cpp: loads the cache file of a year and writes it anew.
#include "model/CacheFile.h"

#include <functional>
#include <utility>
#include <vector>

#include "model/CacheRecord.h"
#include "support/modFileIO.h"
#include "values/Error.h"

namespace velkor {
namespace {

/// A file that is not there has one of its own.
std::size_t HashOf(const std::optional<std::string>& bytes) {
  return std::hash<std::optional<std::string>>()(bytes);
}

}  // namespace

LoadOutcome CacheFile::Load(const std::string& path, const EventFields& fields,
                            EventCollection& events) {
  std::string bytes;
  bool isRead = true;
  try {
    if (!files_.ReadInto(bytes, path)) {
      Know(path, std::nullopt);
      events = {};
      return LoadOutcome::NoFile;
    }
  } catch (const Error&) {
    // What came before counts.
    isRead = false;
  }
  Know(path, bytes);
  CacheRecordReader reader(bytes, locale_);
  std::vector<CalEvent> loaded;
  // Each event is read where it stays, so there is always one to spare.
  loaded.reserve(reader.CountAhead() + 1);
  loaded.emplace_back();
  while (reader.Next(loaded.back())) {
    fields.Derive(loaded.back());
    loaded.emplace_back();
  }
  loaded.pop_back();
  if (reader.IsOfOtherPage()) {
    events = {};
    return LoadOutcome::NoFile;
  }
  const bool whole = isRead && reader.Remaining() == 0;
  // The bytes go before the collection is ordered: less memory at the peak.
  bytes = {};
  events = EventCollection(std::move(loaded));
  return whole ? LoadOutcome::Loaded : LoadOutcome::LoadedInPart;
}

std::string CacheFile::BytesOf(const EventCollection& events) {
  std::string bytes;
  for (const CalEvent& event : events) {
    AppendCacheRecord(bytes, event.EventID, event.Subject, event.Categories, event.StartDate,
                      event.EndDate, locale_);
  }
  return bytes;
}

void CacheFile::Know(const std::string& path, const std::optional<std::string>& bytes) {
  known_ = Known{path, HashOf(bytes)};
}

/// Nobody else replaces the cache file while this holds the work file.
bool CacheFile::Replace(const CachePaths& paths, const std::string& bytes) {
  const auto work = modFileIO::OpenForWriting(files_, paths.workFile);
  if (!work) return false;
  const std::optional<std::string> before = files_.Read(paths.cacheFile);
  const bool isThere = before == bytes;
  const bool isAnothers =
      known_ && known_->path == paths.cacheFile && known_->hash != HashOf(before);
  if (isThere || isAnothers) {
    files_.Delete(paths.workFile);
    return isThere;
  }
  work->Write(bytes);
  return work->MoveOver(paths.cacheFile);
}

bool CacheFile::Rewrite(const CachePaths& paths, const EventCollection& events) {
  const std::string bytes = BytesOf(events);
  try {
    if (!Replace(paths, bytes)) return false;
  } catch (const Error&) {
    return false;
  }
  Know(paths.cacheFile, bytes);
  return true;
}

}  // namespace velkor
