// model/CacheFile.h: loads the cache file of a year and writes it anew.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "model/CachePaths.h"
#include "model/EventCollection.h"
#include "model/EventFields.h"
#include "platform/System.h"

namespace velkor {

class LocaleApi;

enum class LoadOutcome {
  Loaded,
  /// A record could not be read, or reading the file failed there; those before it were loaded.
  LoadedInPart,
  /// There is no such file, or one whose texts are in another code page: an empty year, which a
  /// refresh fills.
  NoFile,
};

/// The cache of one planner. Not for use by several threads.
class CacheFile {
 public:
  /// Both outlive this.
  CacheFile(Files& files, LocaleApi& locale) : files_(files), locale_(locale) {}

  /// Replaces `events` by those of a cache file, in file order, with their fields derived.
  LoadOutcome Load(const std::string& path, const EventFields& fields, EventCollection& events);

  /// Writes all events into the work file and replaces the cache file with it, while no refresh
  /// works on them. When anything fails, or another planner has replaced the cache file since this
  /// one loaded or wrote it, the cache file stays as it is: these events may be older.
  /// @return whether the cache file holds them; else it needs a refresh
  bool Rewrite(const CachePaths& paths, const EventCollection& events);

 private:
  std::string BytesOf(const EventCollection& events);
  bool Replace(const CachePaths& paths, const std::string& bytes);
  void Know(const std::string& path, const std::optional<std::string>& bytes);

  /// The bytes that a cache file had when it was last loaded or written here.
  struct Known {
    std::string path;
    std::size_t hash = 0;
  };

  Files& files_;
  LocaleApi& locale_;
  std::optional<Known> known_;
};

}  // namespace velkor
