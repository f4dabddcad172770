// calendar/dav/DavClient.cpp: requests with the answers that they must have.
#include "calendar/dav/DavClient.h"

#include <optional>
#include <utility>

#include "calendar/dav/DavPath.h"
#include "calendar/dav/DavRequest.h"
#include "values/Text.h"

namespace velkor {

bool IsGone(int status) {
  return status == 404 || status == 410;
}

bool IsForNow(int status) {
  return status == 408 || status == 423 || status == 425 || status == 429 || status >= 500;
}

bool IsBusy(int status) {
  return status == 429 || status == 503;
}

MultistatusEnd AskForMultistatus(HttpClient& client, const HttpRequest& request,
                                 const std::function<void(DavResponse&&)>& visit) {
  constexpr int Multistatus = 207;
  const HttpResponse response = client.Send(request);
  if (response.status == Multistatus) {
    return {ReadMultistatus(response.body, visit), response.url, response.secondsAhead.value_or(0)};
  }
  if (!response.IsSuccess()) throw RefusalOf(response);
  throw NetworkFault(NetworkFault::Kind::NotUnderstood,
                     "There is no calendar server at " + Printable(request.url) + ".");
}

DescribedCalendar DescribeCalendar(HttpClient& client, const std::string& url) {
  std::optional<DavResponse> told;
  const MultistatusEnd end = AskForMultistatus(
      client, PropertiesRequest(url, 0, CalendarProperties()), [&](DavResponse&& response) {
        if (!told) told = std::move(response);
      });
  DescribedCalendar described{CalendarOf(end.url, told.value_or(DavResponse())), end.secondsAhead};
  // What is told about it may have another path, not another server.
  if (!IsSameServer(described.calendar.url, end.url))
    described.calendar.url = CollectionUrl(end.url);
  if (!described.calendar.isCalendar) {
    throw NetworkFault(NetworkFault::Kind::NotUnderstood,
                       "There is no calendar at " + Printable(url) + ".");
  }
  return described;
}

std::string StrongETag(std::string_view etag) {
  std::string_view tag = Trim(etag);
  if (tag.starts_with("W/") || tag.starts_with("w/")) tag.remove_prefix(2);
  if (tag.empty() || tag.starts_with('"')) return std::string(tag);
  return '"' + std::string(tag) + '"';
}

void ExpectNoPage(const HttpResponse& response) {
  constexpr int Plain = 200;
  if (response.status != Plain || !response.Header("content-type").starts_with("text/html")) return;
  throw NetworkFault(NetworkFault::Kind::NotUnderstood, "There is a page for a browser at " +
                                                            Printable(response.url) +
                                                            ", where a calendar was expected.");
}

HttpResponse GetObject(HttpClient& client, const std::string& collection, const std::string& href) {
  // A server that compresses may change the entity tag with it.
  HttpResponse response = client.Send(
      {"GET",
       ObjectUrl(collection, href),
       {{"Accept", "text/calendar"}, {"Accept-Encoding", "identity"}, {"CalDAV-Timezones", "T"}},
       {}});
  ExpectNoPage(response);
  return response;
}

}  // namespace velkor
