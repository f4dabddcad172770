// calendar/net/Http.cpp: headers by name, and the sentence for each status that says no.
#include "calendar/net/Http.h"

#include <QUrl>
#include <algorithm>

#include "calendar/net/HttpDate.h"
#include "values/Text.h"

namespace velkor {
namespace {

std::optional<std::chrono::seconds> RetryAfter(const HttpResponse& response) {
  constexpr long long Longest = 86'400;
  const std::string value(Trim(response.Header("retry-after")));
  auto seconds = ParseInteger(value);
  if (!seconds) {
    const auto date = SecondsOfHttpDate(value);
    if (date) seconds = *date - (SecondsNow() + response.secondsAhead.value_or(0));
  }
  if (!seconds) return std::nullopt;
  return std::chrono::seconds(std::clamp(*seconds, 0LL, Longest));
}

/// What a status means, after "The server h".
std::string MeaningOf(int status) {
  switch (status) {
    case 403:
      return "does not allow this";
    case 404:
    case 410:
      return "has no calendar at this address";
    case 412:
      return "has another version of it by now";
    case 413:
      return "says that this is too large";
    case 423:
      return "has locked it for somebody else";
    case 429:
      return "asks to be left alone for a while";
    case 503:
      return "is busy or being looked after";
    case 507:
      return "has no room left";
    default:
      return status >= 500 ? "is out of order" : "refuses this";
  }
}

}  // namespace

std::string HttpResponse::Header(std::string_view name) const {
  const auto found = std::ranges::find_if(
      headers, [&](const auto& header) { return SameName(header.first, name); });
  return found == headers.end() ? std::string() : found->second;
}

NetworkFault RefusalOf(const HttpResponse& response) {
  const std::string host = QUrl(QString::fromStdString(response.url)).host().toStdString();
  return {{NetworkFault::Kind::Refused, response.status, RetryAfter(response), {}, host},
          "The server " + host + " " + MeaningOf(response.status) + " (status " +
              std::to_string(response.status) + ")."};
}

}  // namespace velkor
