// calendar/dav/CollectionSync.h: brings a mirror up to date with the calendar on its server.
#pragma once

#include <string>

#include "calendar/dav/ServerCalendar.h"
#include "calendar/dav/SyncProgress.h"
#include "calendar/mirror/Mirror.h"
#include "calendar/net/HttpClient.h"

namespace velkor {

struct SyncedCollection {
  /// The objects in the mirror are others now.
  bool changed = false;
  /// A sentence for people about objects that the server told of and did not give; empty for none.
  /// They are asked for again next time.
  std::string trouble;
};

/// Fetches what changed since the mirror's token, else compares all objects by their entity tags,
/// and gives the mirror the state of a complete synchronisation (but for `trouble`) at the very
/// end: whatever ends this before, the next one finds all that is missing. Objects are fetched a
/// hundred at a time and put as they come, readable or not; one too large for HttpLimits is put
/// without its bytes. A calendar that is as it was costs no request.
/// @param calendar  as DescribeCalendar has just told
/// Throws NetworkFault, and Error as Mirror does.
SyncedCollection SyncCollection(HttpClient& client, const ServerCalendar& calendar, Mirror& mirror,
                                const SyncProgress& progress = {});

}  // namespace velkor
