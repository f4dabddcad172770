// calendar/dav/MakeCalendar.h: makes a new calendar in an account.
#pragma once

#include <string>

#include "calendar/dav/ServerCalendar.h"
#include "calendar/net/HttpClient.h"

namespace velkor {

/// Makes a calendar of appointments and sees to it that it has its colour, where the server keeps
/// colours at all. Throws NetworkFault.
/// @param home    DiscoveredAccount::home
/// @param colour  "#rrggbb"; empty for none
/// @return the calendar as the server has it
ServerCalendar MakeServerCalendar(HttpClient& client, const std::string& home,
                                  const std::string& name, const std::string& colour);

}  // namespace velkor
