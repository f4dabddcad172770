// calendar/net/Subscription.cpp: conditional requests, what counts as a calendar, copy and state.
#include "calendar/net/Subscription.h"

#include <QFile>
#include <algorithm>
#include <nlohmann/json.hpp>

#include "calendar/ics/file/ShortHash.h"
#include "calendar/net/CalendarHead.h"
#include "calendar/net/CopyFolder.h"
#include "calendar/net/HttpClient.h"
#include "calendar/net/HttpDate.h"
#include "values/Text.h"

namespace velkor {
namespace {

using Json = nlohmann::ordered_json;
using Kind = NetworkFault::Kind;

constexpr const char* Copy = "calendar.ics";
constexpr const char* StateFile = "state.json";

SubscriptionState StateIn(const Json& json) {
  SubscriptionState state;
  state.synchronised = json.value("synchronised", state.synchronised);
  state.etag = json.value("etag", state.etag);
  state.lastModified = json.value("lastModified", state.lastModified);
  state.hash = json.value("hash", state.hash);
  state.interval = std::chrono::seconds(json.value("interval", state.interval.count()));
  state.name = json.value("name", state.name);
  state.events = json.value("events", state.events);
  state.trouble = json.value("trouble", state.trouble);
  state.offline = json.value("offline", state.offline);
  return state;
}

void Save(const CopyFolder& folder, const SubscriptionState& state) {
  const Json json{{"synchronised", state.synchronised},
                  {"etag", state.etag},
                  {"lastModified", state.lastModified},
                  {"hash", state.hash},
                  {"interval", state.interval.count()},
                  {"name", state.name},
                  {"events", state.events},
                  {"trouble", state.trouble},
                  {"offline", state.offline}};
  folder.Write(StateFile, json.dump(1, ' ', false, Json::error_handler_t::replace) + "\n");
}

/// The text from its first character on: without blanks, line ends and the mark of UTF-8.
std::string_view Start(std::string_view text) {
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

bool StartsWithName(std::string_view text, std::string_view name) {
  return SameName(text.substr(0, name.size()), name);
}

/// The last line that says something.
std::string_view LastLine(std::string_view text) {
  const std::size_t last = text.find_last_not_of(" \t\r\n");
  text = text.substr(0, last == std::string_view::npos ? 0 : last + 1);
  return text.substr(text.find_last_of("\r\n") + 1);
}

/// Throws NetworkFault for what is no whole calendar.
void CheckCalendar(const HttpResponse& response) {
  const std::string_view start = Start(response.body);
  if (StartsWithName(start, "BEGIN:VCALENDAR")) {
    if (SameName(LastLine(start), "END:VCALENDAR")) return;
    throw NetworkFault(Kind::Offline, "The calendar was cut short on its way.");
  }
  const bool isPage =
      start.starts_with('<') || StartsWithName(response.Header("content-type"), "text/html");
  throw NetworkFault(Kind::NotUnderstood,
                     isPage ? "The server sent a web page in place of a calendar. Perhaps it wants "
                              "you to sign in, or the address has changed."
                            : "What lies at this address is no calendar.");
}

std::int64_t EventsIn(std::string_view calendar) {
  constexpr std::string_view Begin = "\nBEGIN:VEVENT";
  std::int64_t count = 0;
  for (std::size_t at = 0; (at = calendar.find(Begin, at)) != std::string_view::npos; ++at) ++count;
  return count;
}

HttpResponse Ask(HttpClient& client, const std::string& address, const HttpHeaders& headers) {
  const std::vector<std::string> all = WebAddressesOf(address);
  for (std::size_t i = 0;; ++i) {
    try {
      return client.Send({"GET", all[i], headers, {}});
    } catch (const NetworkFault& fault) {
      if (fault.What() != Kind::Offline || i + 1 == all.size()) throw;
    }
  }
}

/// Only for a copy that is there.
HttpHeaders Conditions(const SubscriptionState& state, bool hasCopy) {
  HttpHeaders headers{{"Accept", "text/calendar, */*;q=0.5"}};
  if (hasCopy && !state.etag.empty()) headers.emplace_back("If-None-Match", state.etag);
  if (hasCopy && !state.lastModified.empty()) {
    headers.emplace_back("If-Modified-Since", state.lastModified);
  }
  return headers;
}

/// @return whether the copy is another one now
bool Fetch(HttpClient& client, const std::string& address, const CopyFolder& folder,
           SubscriptionState& state) {
  constexpr int NotModified = 304;
  const bool hasCopy = folder.Has(Copy);
  const HttpResponse response = Ask(client, address, Conditions(state, hasCopy));
  if (response.status == NotModified && hasCopy) return false;
  if (!response.IsSuccess()) throw RefusalOf(response);
  CheckCalendar(response);
  const std::string hash = ShortHash(response.body);
  const bool isNew = !hasCopy || hash != state.hash;
  if (isNew) folder.Write(Copy, response.body);
  state.hash = hash;
  state.etag = response.Header("etag");
  state.lastModified = response.Header("last-modified");
  const CalendarHead head = HeadOf(response.body);
  state.interval = head.interval;
  state.name = head.name;
  state.events = EventsIn(response.body);
  return isNew;
}

}  // namespace

SubscriptionState LoadSubscriptionState(const std::string& folder) {
  constexpr qint64 Most = 100'000;
  QFile file(QString::fromStdString(folder + "/" + StateFile));
  if (!file.open(QIODevice::ReadOnly)) return {};
  const Json json = Json::parse(file.read(Most).toStdString(), nullptr, false);
  try {
    return json.is_object() ? StateIn(json) : SubscriptionState{};
  } catch (const Json::exception&) {
    return {};
  }
}

bool BringUpToDate(HttpClient& client, const std::string& address, const std::string& folder) {
  const CopyFolder copy(folder);
  SubscriptionState state = LoadSubscriptionState(folder);
  const auto end = [&](const std::string& trouble, bool offline) {
    state.trouble = trouble;
    state.offline = offline;
    Save(copy, state);
  };
  try {
    const bool isNew = Fetch(client, address, copy, state);
    state.synchronised = SecondsNow();
    end({}, false);
    return isNew;
  } catch (const NetworkFault& fault) {
    end(fault.Description(), fault.What() == Kind::Offline);
    throw;
  } catch (const Error& error) {
    end(error.Description(), false);
    throw;
  }
}

std::vector<std::string> WebAddressesOf(const std::string& address) {
  const std::size_t colon = std::min(address.find(':'), address.size());
  const std::string_view scheme = std::string_view(address).substr(0, colon);
  const std::string rest = address.substr(colon);
  if (SameName(scheme, "webcal")) return {"https" + rest, "http" + rest};
  if (SameName(scheme, "webcals")) return {"https" + rest};
  return {address};
}

}  // namespace velkor
