// calendar/dav/Discovery.h: finds the calendars of an account from an address or a mail domain.
#pragma once

#include <string>
#include <vector>

#include "calendar/dav/ServerCalendar.h"
#include "calendar/net/Http.h"

namespace velkor {

struct DiscoveredAccount {
  /// Where new calendars are made; empty where the server tells no such place.
  std::string home;
  /// Those that take appointments, as the server lists them.
  std::vector<ServerCalendar> calendars;
};

/// Asks the address itself, then what the server names as the place of its calendars (RFC 6764
/// section 5, without DNS), for the user's principal and calendar home (RFC 4791 section 6.2.1),
/// and lists that. The address of one calendar gives that calendar too, whoever owns it.
/// @param address  a URL, a host with or without a port and a path, or a mail address
/// @param access   whose `url` is set from the address; without a user, a mail address is the user
/// Throws NetworkFault; NotUnderstood where no calendars are found.
DiscoveredAccount DiscoverCalendars(const std::string& address, HttpAccess access,
                                    const HttpLimits& limits = {});

}  // namespace velkor
