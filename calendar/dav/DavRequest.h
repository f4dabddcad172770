// calendar/dav/DavRequest.h: makes the requests that only calendar servers know.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "calendar/net/Http.h"

namespace velkor {

/// Asks for properties of a resource, or (depth 1) of all within it too (RFC 4918 section 9.1).
/// @param names  as in DavXml.h
HttpRequest PropertiesRequest(const std::string& url, int depth,
                              std::span<const std::string_view> names);

/// Asks what changed in a collection since a token; all for an empty one (RFC 6578 section 3.2).
HttpRequest ChangesRequest(const std::string& url, std::string_view syncToken);

/// Asks for several objects at once (RFC 4791 section 7.9).
/// @param hrefs  as CanonicalHref gives them
HttpRequest ObjectsRequest(const std::string& url, std::span<const std::string> hrefs);

/// Makes a calendar of appointments (RFC 4791 section 5.3.1).
/// @param colour  "#rrggbb"; empty for none
HttpRequest MakeCalendarRequest(const std::string& url, std::string_view name,
                                std::string_view colour);

/// Gives a calendar a colour.
HttpRequest ColourRequest(const std::string& url, std::string_view colour);

}  // namespace velkor
