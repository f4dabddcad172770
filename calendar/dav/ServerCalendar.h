// calendar/dav/ServerCalendar.h: what a server says about a calendar, or about whatever else an
// address leads to.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "calendar/dav/DavXml.h"

namespace velkor {

struct ServerCalendar {
  /// Of the collection, with a slash at its end.
  std::string url;
  /// For people; the last part of the address where the server knows none.
  std::string name;
  /// "#rrggbb"; empty for none.
  std::string colour;
  bool readOnly = false;
  bool isCalendar = false;
  /// It takes appointments, not only tasks.
  bool holdsAppointments = false;
  /// It tells what changed since a token (RFC 6578).
  bool tellsChanges = false;
  std::string syncToken;
  std::string ctag;
};

/// The properties that CalendarOf reads.
std::span<const std::string_view> CalendarProperties();

/// @param url  where the answer came from
ServerCalendar CalendarOf(const std::string& url, const DavResponse& response);

}  // namespace velkor
