// calendar/dav/CollectionSync.cpp: which objects changed, by token or by comparison, and their
// fetching.
#include "calendar/dav/CollectionSync.h"

#include <array>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "calendar/dav/DavClient.h"
#include "calendar/dav/DavPath.h"
#include "calendar/dav/DavRequest.h"
#include "calendar/dav/DavXml.h"
#include "calendar/dav/ObjectFetch.h"
#include "calendar/net/HttpDate.h"

namespace velkor {
namespace {

constexpr int NotFound = 404;
constexpr int TooMany = 507;
/// How often an answer may be cut, and how many objects a calendar may have.
constexpr int MostCuts = 10'000;
constexpr std::size_t MostObjects = 1'000'000;

/// What the mirror has of one object.
struct KnownObject {
  std::string etag;
  /// The server has listed it in this synchronisation.
  bool listed = false;
};

/// One answer about a collection's objects.
struct Listing {
  std::vector<FetchedKey> there;
  std::vector<std::string> gone;
  std::string token;
  /// There is more to be told, from this token on (RFC 6578 section 3.6).
  bool isCut = false;
};

class Synchronisation {
 public:
  Synchronisation(HttpClient& client, const ServerCalendar& calendar, Mirror& mirror,
                  const SyncProgress& progress)
      : client_(client),
        calendar_(calendar),
        mirror_(mirror),
        fetch_(client, calendar.url, mirror, progress) {}

  SyncedCollection Run() {
    if (IsAsItWas(mirror_.State())) {
      Finish(mirror_.State());
      return {};
    }
    for (ObjectKey& key : mirror_.Objects()) known_[key.href].etag = std::move(key.etag);
    // Where an object is damaged, the token is gone by now.
    MirrorState state = mirror_.State();
    state.syncToken = calendar_.tellsChanges ? FollowChanges(state.syncToken) : ListAll();
    state.ctag = calendar_.ctag;
    // An appointment that was moved keeps its name only once its old place is free.
    if (isWhole_) RemoveUnlisted();
    fetch_.Fetch(std::move(wanted_));
    if (fetch_.MissingCount() > 0) {
      const MirrorState before = mirror_.State();
      state.syncToken = before.syncToken;
      state.ctag = before.ctag;
    }
    Finish(std::move(state));
    return {changed_ || fetch_.HasChanged(), fetch_.Trouble()};
  }

 private:
  bool IsAsItWas(const MirrorState& state) const {
    const bool sameToken = !calendar_.syncToken.empty() && calendar_.syncToken == state.syncToken;
    const bool sameMark = !calendar_.ctag.empty() && calendar_.ctag == state.ctag;
    return state.synchronised != 0 && (sameToken || sameMark);
  }

  void Finish(MirrorState state) {
    state.displayName = calendar_.name;
    state.colour = calendar_.colour;
    state.readOnly = calendar_.readOnly;
    state.synchronised = SecondsNow();
    state.trouble = fetch_.Trouble();
    state.offline = false;
    mirror_.SetState(state);
  }

  /// @return the token to begin with next time
  std::string FollowChanges(std::string token) {
    isWhole_ = token.empty();
    auto listing = Changes(token);
    if (!listing && !isWhole_) {
      isWhole_ = true;
      token.clear();
      listing = Changes(token);
    }
    for (int cuts = 0; listing; ++cuts) {
      Take(*listing);
      if (!listing->isCut) return listing->token;
      if (cuts == MostCuts || listing->token.empty() || listing->token == token) break;
      token = listing->token;
      listing = Changes(token);
    }
    return ListAll();
  }

  /// @return an empty token: all is compared next time, too, unless the server's mark is the same
  std::string ListAll() {
    isWhole_ = true;
    Listing listing;
    static constexpr std::array Names{dav::ETag, dav::ResourceType};
    AskForMultistatus(client_, PropertiesRequest(calendar_.url, 1, Names),
                      [&](DavResponse&& response) {
                        const DavValue* type = response.Find(dav::ResourceType);
                        const bool isObject = type == nullptr || !type->Holds(dav::Collection);
                        if (isObject) Note(response, listing);
                      });
    Take(listing);
    return {};
  }

  /// None when the server refuses: the token is no longer good (which some tell as a fault of their
  /// own), or it does not tell changes after all.
  std::optional<Listing> Changes(const std::string& token) {
    Listing listing;
    try {
      listing.token = AskForMultistatus(client_, ChangesRequest(calendar_.url, token),
                                        [&](DavResponse&& response) { Note(response, listing); })
                          .syncToken;
    } catch (const NetworkFault& fault) {
      const int status = fault.Told().status;
      if (fault.What() != NetworkFault::Kind::Refused || IsBusy(status)) throw;
      return std::nullopt;
    }
    return listing;
  }

  void Note(const DavResponse& response, Listing& listing) const {
    if (response.status == TooMany) listing.isCut = true;
    auto href = ObjectHref(calendar_.url, response.href);
    if (!href || response.status == TooMany) return;
    if (response.status == NotFound) {
      listing.gone.push_back(*std::move(href));
    } else {
      listing.there.push_back({*std::move(href), StrongETag(response.Text(dav::ETag))});
    }
  }

  void Take(Listing& listing) {
    for (const std::string& href : listing.gone) Remove(href);
    for (FetchedKey& key : listing.there) {
      KnownObject& known = known_[key.href];
      known.listed = true;
      if (!key.etag.empty() && known.etag == key.etag) continue;
      known.etag = key.etag;
      wanted_.push_back(std::move(key));
    }
    if (known_.size() > MostObjects) {
      throw NetworkFault(NetworkFault::Kind::TooLarge, "The calendar has too many appointments.");
    }
  }

  void RemoveUnlisted() {
    std::vector<std::string> unlisted;
    for (const auto& [href, known] : known_) {
      if (!known.listed) unlisted.push_back(href);
    }
    for (const std::string& href : unlisted) Remove(href);
  }

  void Remove(const std::string& href) {
    if (known_.erase(href) == 0) return;
    mirror_.Remove(href);
    changed_ = true;
  }

  HttpClient& client_;
  const ServerCalendar& calendar_;
  Mirror& mirror_;
  ObjectFetch fetch_;
  std::unordered_map<std::string, KnownObject> known_;
  std::vector<FetchedKey> wanted_;
  /// The server has listed all objects, not only those that changed.
  bool isWhole_ = false;
  bool changed_ = false;
};

}  // namespace

SyncedCollection SyncCollection(HttpClient& client, const ServerCalendar& calendar, Mirror& mirror,
                                const SyncProgress& progress) {
  return Synchronisation(client, calendar, mirror, progress).Run();
}

}  // namespace velkor
