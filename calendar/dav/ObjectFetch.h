// calendar/dav/ObjectFetch.h: fetches objects of a calendar into its mirror, a portion at a time.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "calendar/dav/SyncProgress.h"
#include "calendar/mirror/Mirror.h"
#include "calendar/net/HttpClient.h"

namespace velkor {

/// An object that a server has told of: its canonical path and its entity tag.
struct FetchedKey {
  std::string href;
  std::string etag;
};

class ObjectFetch {
 public:
  /// @param collection  its URL
  ObjectFetch(HttpClient& client, std::string collection, Mirror& mirror, SyncProgress progress)
      : client_(client),
        collection_(std::move(collection)),
        mirror_(mirror),
        progress_(std::move(progress)) {}

  /// Puts them, as they come; one that is gone meanwhile is removed. Throws NetworkFault when the
  /// server is busy or gives nothing any more, Error as Mirror does.
  void Fetch(std::vector<FetchedKey> wanted);

  bool HasChanged() const { return changed_; }
  /// How many the server told of and did not give, and a sentence about it.
  std::size_t MissingCount() const { return missing_; }
  std::string Trouble() const;

 private:
  using Keys = std::span<const FetchedKey>;

  void FetchPortion(Keys keys);
  /// @return those that the server did not answer about
  std::vector<FetchedKey> FetchTogether(Keys keys);
  void FetchAlone(const FetchedKey& key);
  void Miss(const HttpResponse& response);
  void Put(const FetchedKey& key, const std::string& bytes);
  void Remove(const FetchedKey& key);

  HttpClient& client_;
  std::string collection_;
  Mirror& mirror_;
  SyncProgress progress_;
  /// Until the server refuses to give several objects at once.
  bool givesSeveral_ = true;
  bool changed_ = false;
  std::size_t missing_ = 0;
};

}  // namespace velkor
