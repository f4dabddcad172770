// calendar/dav/SendEdits.h: sends the edits that wait in a mirror to the server, losing none.
#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>

#include "calendar/dav/ServerCalendar.h"
#include "calendar/dav/SyncProgress.h"
#include "calendar/mirror/Outbox.h"
#include "calendar/net/HttpClient.h"

namespace velkor {

struct SendOptions {
  /// How far the server's clock is ahead of ours.
  std::int64_t secondsAhead = 0;
  /// Names of objects whose edits are left for another time.
  std::set<std::string> leave = {};
  /// The mirror has just been synchronised.
  bool isUpToDate = false;
  SyncProgress progress = {};
};

struct SentEdits {
  std::size_t sent = 0;
  std::size_t refused = 0;
  /// Names of objects whose edits the server does not take now; they go on waiting. New
  /// appointments that the server has under another address wait for a synchronisation only, and
  /// are not among these.
  std::set<std::string> waiting = {};
  std::size_t conflicts = 0;
  /// Why the last one waits, a sentence for people.
  std::string trouble = {};
};

/// Sends each edit on the condition that the object is still the one that the edit was made for (or
/// that there is none yet). Where it is not, the server's is fetched into the mirror, the edit
/// applied to that and sent again. What the server refuses for good (403, 415 ...) is refused in
/// the outbox; what it cannot now (423, 500, 507 ...) goes on waiting, and the next edit is sent.
/// Every step may be the last one: the next call goes on from there.
/// @param mirror  the outbox's
/// Throws NetworkFault when the server is not reached or wants to be left alone (429, 503), and
/// Error as Mirror does.
SentEdits SendEdits(HttpClient& client, const ServerCalendar& calendar, Mirror& mirror,
                    Outbox& outbox, const SendOptions& options = {});

}  // namespace velkor
