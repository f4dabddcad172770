// calendar/dav/Discovery.cpp: from an address to the principal, the calendar home and its list.
#include "calendar/dav/Discovery.h"

#include <QUrl>
#include <algorithm>
#include <deque>
#include <iterator>
#include <memory>
#include <optional>
#include <utility>

#include "calendar/dav/DavClient.h"
#include "calendar/dav/DavPath.h"
#include "calendar/dav/DavRequest.h"
#include "calendar/dav/DavXml.h"
#include "values/Text.h"

namespace velkor {
namespace {

using Kind = NetworkFault::Kind;

/// Of homes that a principal names.
constexpr std::size_t MostHomes = 10;

bool IsOnThisMachine(const std::string& host) {
  return host == "localhost" || host.starts_with("127.");
}

std::string WithScheme(const std::string& address) {
  if (address.find("://") != std::string::npos) return address;
  const std::string host = QUrl(QString::fromStdString("https://" + address)).host().toStdString();
  return (IsOnThisMachine(host) ? "http://" : "https://") + address;
}

/// The domain of a mail address; none for another address.
std::optional<std::string> MailDomain(const std::string& address) {
  const std::size_t at = address.rfind('@');
  const bool isMail = at != std::string::npos && at > 0 && at + 1 < address.size() &&
                      address.find('/') == std::string::npos;
  return isMail ? std::optional(address.substr(at + 1)) : std::nullopt;
}

/// Where to begin, in turn.
std::deque<std::string> PlacesToAsk(const std::string& address) {
  const auto domain = MailDomain(address);
  const std::string typed = WithScheme(domain.value_or(address));
  const QUrl url(QString::fromStdString(typed), QUrl::StrictMode);
  if (!url.isValid() || url.host().isEmpty()) {
    throw NetworkFault(Kind::NotUnderstood,
                       "\"" + Printable(address) + "\" is no address of a server.");
  }
  const auto wellKnown = WholeUrl(typed, "/.well-known/caldav");
  const auto root = WholeUrl(typed, "/");
  std::deque<std::string> places;
  const bool hasPath = url.path().size() > 1;
  if (hasPath) places.push_back(typed);
  if (wellKnown) places.push_back(*wellKnown);
  if (root) places.push_back(*root);
  return places;
}

/// What is said of one place on the way.
struct Waypoint {
  ServerCalendar itself;
  std::string principal;
  std::vector<std::string> homes;
};

/// All DAV:href of a property, made whole.
std::vector<std::string> UrlsIn(const DavResponse& response, std::string_view property,
                                const std::string& from) {
  std::vector<std::string> urls;
  const DavValue* value = response.Find(property);
  if (value == nullptr) return urls;
  for (const std::string& href : value->hrefs) {
    const auto url = WholeUrl(from, href);
    if (url && urls.size() < MostHomes) urls.push_back(*url);
  }
  return urls;
}

Waypoint AskAt(HttpClient& client, const std::string& url) {
  std::vector<std::string_view> names{dav::CurrentUserPrincipal, dav::CalendarHomeSet};
  std::ranges::copy(CalendarProperties(), std::back_inserter(names));
  std::optional<DavResponse> first;
  const MultistatusEnd end =
      AskForMultistatus(client, PropertiesRequest(url, 0, names), [&](DavResponse&& response) {
        if (!first) first = std::move(response);
      });
  const DavResponse told = first.value_or(DavResponse());
  const auto principals = UrlsIn(told, dav::CurrentUserPrincipal, end.url);
  return {CalendarOf(end.url, told), principals.empty() ? std::string() : principals.front(),
          UrlsIn(told, dav::CalendarHomeSet, end.url)};
}

/// Whether it may help to ask elsewhere.
bool LeadsOn(const NetworkFault& fault) {
  return fault.What() == Kind::Refused ? !IsBusy(fault.Told().status)
                                       : fault.What() == Kind::NotUnderstood;
}

/// Asks servers for what belongs to one account.
class Search {
 public:
  Search(HttpAccess access, const HttpLimits& limits)
      : access_(std::move(access)), limits_(limits) {}

  DiscoveredAccount Run(const std::string& address) {
    std::optional<NetworkFault> first;
    for (auto places = PlacesToAsk(address); !places.empty();) {
      const std::string place = places.front();
      places.pop_front();
      try {
        if (LookAt(place)) return std::move(account_);
      } catch (const NetworkFault& fault) {
        const std::string other = "https://" + fault.Told().host + "/";
        if (fault.What() == Kind::Login && MayMoveTo(other)) {
          // The domain of a mail address often leads to the server that has its calendars.
          places = PlacesToAsk(other);
        } else if (!LeadsOn(fault)) {
          throw;
        } else if (!first) {
          first = fault;
        }
      }
    }
    if (!account_.calendars.empty()) return std::move(account_);
    if (first && first->What() == Kind::Refused) throw NetworkFault(*first);
    throw NetworkFault(Kind::NotUnderstood, "No calendars were found at " + Printable(address) +
                                                ". Is this the address of a calendar server?");
  }

 private:
  /// @return true when the search is over
  bool LookAt(const std::string& place) {
    Waypoint here = Ask(place);
    if (here.itself.holdsAppointments) Add(here.itself);
    std::vector<std::string> homes = here.homes;
    if (homes.empty() && !here.principal.empty()) homes = Ask(here.principal).homes;
    // An address typed in may be the home itself.
    const bool isGuess = homes.empty();
    if (isGuess) homes.push_back(here.itself.url);
    for (const std::string& home : homes) List(home);
    if (!isGuess) account_.home = CollectionUrl(homes.front());
    return !isGuess || !account_.calendars.empty();
  }

  /// Once, and only to where ClientFor tells the password.
  bool MayMoveTo(const std::string& url) {
    return !std::exchange(hasMoved_, true) && IsOfSameOwner(access_.url, url);
  }

  Waypoint Ask(const std::string& url) { return AskAt(ClientFor(url), url); }

  void List(const std::string& home) {
    std::vector<DavResponse> all;
    const MultistatusEnd end = AskForMultistatus(
        ClientFor(home), PropertiesRequest(CollectionUrl(home), 1, CalendarProperties()),
        [&](DavResponse&& response) {
          if (response.Find(dav::ResourceType) != nullptr) all.push_back(std::move(response));
        });
    for (const DavResponse& response : all) {
      ServerCalendar calendar = CalendarOf(end.url, response);
      if (calendar.holdsAppointments) Add(std::move(calendar));
    }
  }

  void Add(ServerCalendar calendar) {
    if (std::ranges::find(account_.calendars, calendar.url, &ServerCalendar::url) ==
        account_.calendars.end()) {
      account_.calendars.push_back(std::move(calendar));
    }
  }

  /// The password goes on to another server of the same owner; any other is asked without it.
  HttpClient& ClientFor(const std::string& url) {
    const bool isElsewhere = access_.url.empty() || !IsSameServer(access_.url, url);
    if (isElsewhere && (access_.url.empty() || IsOfSameOwner(access_.url, url))) {
      access_.url = url;
      client_ = std::make_unique<HttpClient>(access_, limits_);
    }
    return *client_;
  }

  HttpAccess access_;
  HttpLimits limits_;
  std::unique_ptr<HttpClient> client_;
  DiscoveredAccount account_;
  bool hasMoved_ = false;
};

}  // namespace

DiscoveredAccount DiscoverCalendars(const std::string& address, HttpAccess access,
                                    const HttpLimits& limits) {
  const std::string typed(Trim(address));
  if (access.user.empty() && MailDomain(typed)) access.user = typed;
  access.url.clear();
  return Search(std::move(access), limits).Run(typed);
}

}  // namespace velkor
