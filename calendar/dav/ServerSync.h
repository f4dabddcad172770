// calendar/dav/ServerSync.h: one synchronisation of a server's calendar: what waits is sent, what
// is new is fetched.
#pragma once

#include <cstddef>
#include <string>

#include "calendar/dav/CollectionSync.h"
#include "calendar/mirror/Mirror.h"
#include "calendar/net/HttpClient.h"

namespace velkor {

struct ServerSyncResult {
  /// Another of our programs is at it; nothing was done.
  bool isBusy = false;
  /// What the mirror shows has changed.
  bool changed = false;
  std::size_t sent = 0;
  std::size_t refused = 0;
  /// Edits that the server does not take now.
  std::size_t waiting = 0;
};

/// Asks what the calendar is like, sends the edits that wait, fetches what others changed, and
/// sends what could not be sent before. May be ended at any moment. The mirror's state tells
/// afterwards when it was synchronised, or what kept it from that.
/// @param url  of the collection
/// Throws NetworkFault, and Error as Mirror does; the state tells the same, where the disk takes
/// it.
ServerSyncResult SyncServerCalendar(HttpClient& client, const std::string& url, Mirror& mirror,
                                    const SyncProgress& progress = {});

}  // namespace velkor
