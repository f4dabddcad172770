// calendar/net/CalendarHead.cpp: the properties before a calendar's first component, by libical.
#include "calendar/net/CalendarHead.h"

#include <libical/ical.h>

#include <algorithm>
#include <memory>
#include <string>

#include "values/Text.h"

namespace velkor {
namespace {

constexpr std::chrono::seconds Shortest = std::chrono::minutes(15);
constexpr std::chrono::seconds Longest = std::chrono::hours(24 * 7);

struct FreeComponent {
  void operator()(icalcomponent* component) const { icalcomponent_free(component); }
};

/// The calendar without its components.
std::string WithoutComponents(std::string_view calendar) {
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

/// Without the backslashes of texts.
const char* TextOf(icalproperty* property) {
  const icalvalue* const value = icalproperty_get_value(property);
  if (value != nullptr && icalvalue_isa(value) == ICAL_TEXT_VALUE) return icalvalue_get_text(value);
  return icalproperty_get_value_as_string(property);
}

/// What a property says when it has one of two names; the first name comes first.
struct Choice {
  const char* first;
  const char* second;
  std::string text = {};
  bool isFirst = false;

  void Offer(std::string_view name, const char* value) {
    const bool named = SameName(name, first);
    if (!named && (isFirst || !SameName(name, second))) return;
    text = value;
    isFirst = named;
  }
};

}  // namespace

CalendarHead HeadOf(std::string_view calendar) {
  const std::unique_ptr<icalcomponent, FreeComponent> parsed(
      icalparser_parse_string(WithoutComponents(calendar).c_str()));
  Choice name{"NAME", "X-WR-CALNAME"};
  Choice interval{"REFRESH-INTERVAL", "X-PUBLISHED-TTL"};
  const auto next = [&](auto function) { return function(parsed.get(), ICAL_ANY_PROPERTY); };
  icalproperty* property = parsed ? next(icalcomponent_get_first_property) : nullptr;
  for (; property != nullptr; property = next(icalcomponent_get_next_property)) {
    const char* const called = icalproperty_get_property_name(property);
    const char* const text = TextOf(property);
    if (called == nullptr || text == nullptr) continue;
    name.Offer(called, text);
    interval.Offer(called, text);
  }
  CalendarHead head{Printable(name.text)};
  const std::chrono::seconds wanted = Duration(interval.text.c_str());
  if (wanted > wanted.zero()) head.interval = std::clamp(wanted, Shortest, Longest);
  return head;
}

}  // namespace velkor
