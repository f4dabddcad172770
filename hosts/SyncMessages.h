// hosts/SyncMessages.h: what is asked of the program vkrSync and what it tells, each a line of
// JSON.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "calendar/net/NetworkFault.h"

namespace velkor {

struct SyncJob {
  enum class Kind {
    /// Bring the copy of an address up to date.
    Address,
    /// Send what waits to a server's calendar, and bring its mirror up to date.
    Server,
    /// Find the calendars of an account.
    Discover,
    /// Make a calendar, and find all of them again.
    Make,
  };
  Kind kind = Kind::Address;
  /// Address and Server: the URL. Discover: what the user gave, a URL, a host or a mail address.
  /// Make: the calendar home.
  std::string location = {};
  /// Address and Server: the folder of the copy or the mirror.
  std::string place = {};
  std::string user = {};
  std::string password = {};
  /// Certificates that the user trusts, as HttpAccess has them.
  std::map<std::string, std::string> trusted = {};
  /// Make: its name, and its colour as "#rrggbb" or empty.
  std::string name = {};
  std::string colour = {};

  friend bool operator==(const SyncJob&, const SyncJob&) = default;
};

/// Objects that are fetched or sent.
struct SyncStep {
  std::int64_t done = 0;
  /// 0: not known yet.
  std::int64_t of = 0;
  friend bool operator==(const SyncStep&, const SyncStep&) = default;
};

/// What is read on this machine is other than before.
struct SyncChanged {
  friend bool operator==(const SyncChanged&, const SyncChanged&) = default;
};

/// A server wants a user and a password, or others than were given.
struct SyncLogin {
  std::string host = {};
  std::string user = {};
  friend bool operator==(const SyncLogin&, const SyncLogin&) = default;
};

struct FoundCalendar {
  std::string url = {};
  std::string name = {};
  /// "#rrggbb"; empty for none.
  std::string colour = {};
  bool readOnly = false;
  friend bool operator==(const FoundCalendar&, const FoundCalendar&) = default;
};

/// The answer to Discover and Make.
struct SyncCalendars {
  /// Where new ones are made; empty: nowhere.
  std::string home = {};
  std::vector<FoundCalendar> calendars = {};
  friend bool operator==(const SyncCalendars&, const SyncCalendars&) = default;
};

/// The answer to Address: what lies there.
struct SyncContent {
  /// The calendar's own; empty for none.
  std::string name = {};
  std::int64_t events = 0;
  friend bool operator==(const SyncContent&, const SyncContent&) = default;
};

/// The last thing that is told.
struct SyncOutcome {
  bool done = false;
  /// Not done: the server was not reached.
  bool offline = false;
  /// Not done: why, a sentence for people.
  std::string reason = {};
  /// Not done: how long the server wants to be left alone.
  std::optional<std::chrono::seconds> retryAfter = {};
  /// Done: how long the calendar says that it stays current.
  std::optional<std::chrono::seconds> interval = {};
  friend bool operator==(const SyncOutcome&, const SyncOutcome&) = default;
};

using SyncEvent = std::variant<SyncStep, SyncChanged, CertificateFault, SyncLogin, SyncCalendars,
                               SyncContent, SyncOutcome>;

/// One line of JSON, without its end.
std::string LineOf(const SyncJob& job);
std::string LineOf(const SyncEvent& event);

/// Throws Error that says what is wrong with the line.
SyncJob ParseSyncJob(std::string_view line);
/// None for a line that is none.
std::optional<SyncEvent> ParseSyncEvent(std::string_view line);

}  // namespace velkor
