// calendar/net/RefreshInterval.cpp: the properties before a calendar's first component, by libical.
#include "calendar/net/RefreshInterval.h"

#include <libical/ical.h>

#include <algorithm>
#include <memory>
#include <string>

#include "values/Text.h"

namespace velkor {
namespace {

constexpr std::chrono::seconds Usual = std::chrono::hours(1);
constexpr std::chrono::seconds Shortest = std::chrono::minutes(15);
constexpr std::chrono::seconds Longest = std::chrono::hours(24 * 7);

struct FreeComponent {
  void operator()(icalcomponent* component) const { icalcomponent_free(component); }
};

/// The calendar without its components.
std::string HeadOf(std::string_view calendar) {
  constexpr std::size_t Most = 100'000;
  std::string_view rest = calendar.substr(0, Most);
  std::size_t end = 0;
  while (end < rest.size()) {
    const std::size_t next = rest.find('\n', end);
    const std::string_view line = rest.substr(end, next - end);
    if (end > 0 && SameName(line.substr(0, 6), "BEGIN:")) break;
    if (next == std::string_view::npos) break;
    end = next + 1;
  }
  return std::string(rest.substr(0, end)) + "END:VCALENDAR\r\n";
}

std::chrono::seconds Duration(const char* text) {
  const icaldurationtype duration = icaldurationtype_from_string(text);
  if (icaldurationtype_is_bad_duration(duration)) return std::chrono::seconds(0);
  return std::chrono::seconds(icaldurationtype_as_int(duration));
}

}  // namespace

std::chrono::seconds RefreshIntervalOf(std::string_view calendar) {
  const std::unique_ptr<icalcomponent, FreeComponent> head(
      icalparser_parse_string(HeadOf(calendar).c_str()));
  std::chrono::seconds told(0);
  std::chrono::seconds published(0);
  icalproperty* property =
      head ? icalcomponent_get_first_property(head.get(), ICAL_ANY_PROPERTY) : nullptr;
  for (; property != nullptr;
       property = icalcomponent_get_next_property(head.get(), ICAL_ANY_PROPERTY)) {
    const char* const name = icalproperty_get_property_name(property);
    const char* const value = icalproperty_get_value_as_string(property);
    if (name == nullptr || value == nullptr) continue;
    if (SameName(name, "REFRESH-INTERVAL")) told = Duration(value);
    if (SameName(name, "X-PUBLISHED-TTL")) published = Duration(value);
  }
  const std::chrono::seconds wanted = told > told.zero() ? told : published;
  return wanted > wanted.zero() ? std::clamp(wanted, Shortest, Longest) : Usual;
}

}  // namespace velkor
