// calendar/dav/ServerSync.cpp: the order of a synchronisation, and its end in the mirror's state.
#include "calendar/dav/ServerSync.h"

#include "calendar/dav/DavClient.h"
#include "calendar/dav/DavPath.h"
#include "calendar/dav/SendEdits.h"
#include "calendar/mirror/Outbox.h"

namespace velkor {
namespace {

void Count(const SentEdits& sent, ServerSyncResult& result) {
  result.sent += sent.sent;
  result.refused += sent.refused;
  result.waiting += sent.waiting.size();
  if (sent.sent + sent.refused > 0) result.changed = true;
}

void SetTrouble(Mirror& mirror, const std::string& trouble, bool offline) {
  MirrorState state = mirror.State();
  if (state.trouble == trouble && state.offline == offline) return;
  state.trouble = trouble;
  state.offline = offline;
  mirror.SetState(state);
}

ServerSyncResult Synchronise(HttpClient& client, const std::string& url, Mirror& mirror,
                             const SyncProgress& progress) {
  auto [calendar, secondsAhead] = DescribeCalendar(client, url);
  Outbox outbox(mirror);
  ServerSyncResult result;
  const SentEdits first =
      SendEdits(client, calendar, mirror, outbox, {secondsAhead, {}, false, progress});
  Count(first, result);
  // What is in the way may have come a moment ago.
  if (first.conflicts > 0) calendar = DescribeCalendar(client, url).calendar;
  const SyncedCollection synced = SyncCollection(client, calendar, mirror, progress);
  result.changed = result.changed || synced.changed;
  const SentEdits rest =
      SendEdits(client, calendar, mirror, outbox, {secondsAhead, first.waiting, true, progress});
  Count(rest, result);
  for (const std::string& trouble : {first.trouble, rest.trouble}) {
    if (!trouble.empty()) SetTrouble(mirror, trouble, false);
  }
  return result;
}

}  // namespace

ServerSyncResult SyncServerCalendar(HttpClient& client, const std::string& url, Mirror& mirror,
                                    const SyncProgress& progress) {
  const auto turn = mirror.TryTurn();
  if (!turn) return {.isBusy = true};
  try {
    return Synchronise(client, CollectionUrl(url), mirror, progress);
  } catch (const Error& error) {
    const auto* fault = dynamic_cast<const NetworkFault*>(&error);
    // A disk that is full may not take this either.
    try {
      SetTrouble(mirror, error.Description(),
                 fault != nullptr && fault->What() == NetworkFault::Kind::Offline);
    } catch (const Error&) {
    }
    throw;
  }
}

}  // namespace velkor
