// calendar/dav/ObjectFetch.cpp: a hundred objects in one request, and one by one where that fails.
#include "calendar/dav/ObjectFetch.h"

#include <algorithm>
#include <unordered_map>

#include "calendar/dav/DavClient.h"
#include "calendar/dav/DavPath.h"
#include "calendar/dav/DavRequest.h"
#include "calendar/dav/DavXml.h"

namespace velkor {
namespace {

using Kind = NetworkFault::Kind;

constexpr std::size_t Portion = 100;

}  // namespace

void ObjectFetch::Fetch(std::vector<FetchedKey> wanted) {
  const Keys all(wanted);
  for (std::size_t at = 0; at < all.size(); at += Portion) {
    const std::size_t count = std::min(Portion, all.size() - at);
    FetchPortion(all.subspan(at, count));
    if (progress_) progress_(at + count, all.size());
  }
}

void ObjectFetch::FetchPortion(Keys keys) try {
  if (!givesSeveral_) {
    for (const FetchedKey& key : keys) FetchAlone(key);
    return;
  }
  for (const FetchedKey& key : FetchTogether(keys)) FetchAlone(key);
} catch (const NetworkFault& fault) {
  if (fault.What() != Kind::TooLarge) throw;
  if (keys.size() == 1) {
    // It is shown as one that cannot be read, and not fetched again until it changes.
    Put(keys.front(), {});
    return;
  }
  FetchPortion(keys.first(keys.size() / 2));
  FetchPortion(keys.subspan(keys.size() / 2));
}

std::vector<FetchedKey> ObjectFetch::FetchTogether(Keys keys) {
  std::vector<std::string> hrefs;
  std::unordered_map<std::string, FetchedKey> open;
  for (const FetchedKey& key : keys) {
    hrefs.push_back(key.href);
    open[key.href] = key;
  }
  try {
    AskForMultistatus(client_, ObjectsRequest(collection_, hrefs), [&](DavResponse&& response) {
      const auto href = ObjectHref(collection_, response.href);
      const auto found = href ? open.find(*href) : open.end();
      if (found == open.end()) return;
      const DavValue* data = response.Find(dav::CalendarData);
      const std::string etag = StrongETag(response.Text(dav::ETag));
      if (!etag.empty()) found->second.etag = etag;
      if (IsGone(response.status)) {
        Remove(found->second);
      } else if (data != nullptr && !data->text.empty()) {
        Put(found->second, data->text);
      } else {
        return;
      }
      open.erase(found);
    });
  } catch (const NetworkFault& fault) {
    const bool isRefused = fault.What() == Kind::Refused && !IsBusy(fault.Told().status);
    if (!isRefused && fault.What() != Kind::NotUnderstood) throw;
    // One object that the server stumbles over, or that no XML can hold, spoils its portion; the
    // next portion may do.
    if (isRefused && !IsForNow(fault.Told().status)) givesSeveral_ = false;
  }
  std::vector<FetchedKey> rest;
  for (const FetchedKey& key : keys) {
    if (open.contains(key.href)) rest.push_back(key);
  }
  return rest;
}

void ObjectFetch::FetchAlone(const FetchedKey& key) {
  const HttpResponse response = GetObject(client_, collection_, key.href);
  if (IsGone(response.status)) {
    Remove(key);
  } else if (response.IsSuccess()) {
    const std::string etag = StrongETag(response.Header("etag"));
    Put({key.href, etag.empty() ? key.etag : etag}, response.body);
  } else {
    Miss(response);
  }
}

void ObjectFetch::Miss(const HttpResponse& response) {
  constexpr std::size_t MostMissing = 20;
  if (IsBusy(response.status) || ++missing_ > MostMissing) throw RefusalOf(response);
}

void ObjectFetch::Put(const FetchedKey& key, const std::string& bytes) {
  mirror_.Put(key.href, key.etag, bytes);
  changed_ = true;
}

void ObjectFetch::Remove(const FetchedKey& key) {
  mirror_.Remove(key.href);
  changed_ = true;
}

std::string ObjectFetch::Trouble() const {
  if (missing_ == 0) return {};
  return "The server does not give " + std::to_string(missing_) +
         (missing_ == 1 ? " appointment of this calendar." : " appointments of this calendar.");
}

}  // namespace velkor
