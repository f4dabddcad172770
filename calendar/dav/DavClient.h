// calendar/dav/DavClient.h: asks a calendar server, and tells its answers from everything else.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "calendar/dav/DavXml.h"
#include "calendar/dav/ServerCalendar.h"
#include "calendar/net/HttpClient.h"

namespace velkor {

/// The server has nothing there.
bool IsGone(int status);

/// The server says that it cannot now: it waits for somebody, is busy or out of room.
bool IsForNow(int status);

/// The server says that it wants no more requests for a while.
bool IsBusy(int status);

/// What an answer says besides its responses.
struct MultistatusEnd {
  std::string syncToken;
  /// Where it came from, after redirects.
  std::string url;
  /// How far the server's clock is ahead of ours.
  std::int64_t secondsAhead = 0;
};

/// Sends a request that is answered by a multistatus. Throws NetworkFault: Refused for a status
/// that says no, NotUnderstood for another answer, else as HttpClient::Send and ReadMultistatus do.
MultistatusEnd AskForMultistatus(HttpClient& client, const HttpRequest& request,
                                 const std::function<void(DavResponse&&)>& visit);

struct DescribedCalendar {
  ServerCalendar calendar;
  std::int64_t secondsAhead = 0;
};

/// Throws NetworkFault as AskForMultistatus does, and NotUnderstood for what is no calendar.
DescribedCalendar DescribeCalendar(HttpClient& client, const std::string& url);

/// An entity tag as one that If-Match takes: without the sign of a weak one, in quotes (RFC 9110
/// section 8.8.3). Empty for none.
std::string StrongETag(std::string_view etag);

/// Throws NetworkFault (NotUnderstood) for a success that is a page of HTML: a login page stands
/// between us and the server.
void ExpectNoPage(const HttpResponse& response);

/// One object as it lies on the server: an answer of any status, but no page. Throws NetworkFault.
HttpResponse GetObject(HttpClient& client, const std::string& collection, const std::string& href);

}  // namespace velkor
