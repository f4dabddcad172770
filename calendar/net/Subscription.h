// calendar/net/Subscription.h: keeps the last good copy of a calendar that lies at an address.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace velkor {

class HttpClient;

/// What is known of a copy; its file is state.json in the copy's folder.
struct SubscriptionState {
  /// Seconds since 1970 when the copy was last known to be current; 0 for never.
  std::int64_t synchronised = 0;
  /// What the server gave to ask whether it has changed (RFC 9110 section 13.1), and the hash of
  /// the copy for servers that give nothing.
  std::string etag = {};
  std::string lastModified = {};
  std::string hash = {};
  /// How long the copy counts as current, as CalendarHead tells.
  std::chrono::seconds interval = std::chrono::hours(1);
  /// The calendar's own name, and how many events it holds.
  std::string name = {};
  std::int64_t events = 0;
  /// Why the last try failed, a sentence for people; empty when it did not.
  std::string trouble = {};
  /// It failed since the server was not reached.
  bool offline = false;
};

/// A state that cannot be read is that of a copy that was never made.
SubscriptionState LoadSubscriptionState(const std::string& folder);

/// Fetches the calendar at an address (webcal, webcals, http, https) when the server does not say
/// that it is the same, and puts it in the place of the copy, calendar.ics in the folder, which is
/// made when it is absent. webcal is asked for over TLS first. Whoever looks, whenever the program
/// is stopped, finds the old copy or the new one. What is no whole calendar, such as a page that
/// asks people to sign in, leaves the copy as it is. Another of our programs that is at it is
/// waited for, two minutes at most. Throws NetworkFault, and Error when the copy cannot be written;
/// the state tells it too.
/// @return whether the copy is another one now
bool BringUpToDate(HttpClient& client, const std::string& address, const std::string& folder);

/// The addresses to try one after another for what the user gave.
std::vector<std::string> WebAddressesOf(const std::string& address);

}  // namespace velkor
