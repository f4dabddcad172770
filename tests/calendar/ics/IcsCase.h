// tests/calendar/ics/IcsCase.h: small calendars for tests, and their items in words.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/ics/read/IcsParser.h"
#include "tests/support/ErrorOf.h"

namespace velkor {

/// What a call says against itself.
inline std::string FaultOf(const std::function<void()>& call) {
  return ErrorOf(call).Description();
}

/// "2026-03-05 09:30".
inline std::string Words(Date date) {
  const DateFields fields = date.Fields();
  const auto digits = [](int value, std::size_t width) {
    const std::string text = std::to_string(value);
    return std::string(width - std::min(width, text.size()), '0') + text;
  };
  std::string text = digits(fields.year, 4) + "-" + digits(fields.month, 2) + "-" +
                     digits(fields.day, 2) + " " + digits(fields.hour, 2) + ":" +
                     digits(fields.minute, 2);
  return fields.second == 0 ? text : text + ":" + digits(fields.second, 2);
}

inline std::string Words(Date start, Date end) {
  return Words(start) + " to " + Words(end);
}

/// An event around these lines, which end in LF.
inline std::string Event(std::string_view lines) {
  return "BEGIN:VEVENT\n" + std::string(lines) + "END:VEVENT\n";
}

inline std::string Calendar(std::string_view components) {
  return "BEGIN:VCALENDAR\nVERSION:2.0\n" + std::string(components) + "END:VCALENDAR\n";
}

inline DateWindow Year(int year) {
  return {Date::FromYmd(year, 1, 1), Date::FromFields({year, 12, 31, 23, 59, 59})};
}

inline ParsedCalendar Parse(std::string_view text, const IcsLimits& limits = {}) {
  return ParseIcs(text, "team.ics", Year(2026), limits);
}

inline CalendarItem OnlyItem(std::string_view eventLines) {
  ParsedCalendar calendar = Parse(Calendar(Event(eventLines)));
  return calendar.items.size() == 1 ? calendar.items[0] : CalendarItem{};
}

/// Starts of the occurrences; a changed one with its subject.
inline std::vector<std::string> StartsOf(const CalendarItem& item) {
  std::vector<std::string> starts;
  for (const CalendarOccurrence& occurrence : item.occurrences) {
    std::string text = Words(occurrence.start);
    if (occurrence.changed >= 0) {
      text += " " + item.changed[static_cast<std::size_t>(occurrence.changed)].subject;
    }
    starts.push_back(text);
  }
  return starts;
}

inline std::vector<std::string> ReportsOf(const ParsedCalendar& calendar) {
  std::vector<std::string> reports;
  for (const Diagnostic& diagnostic : calendar.diagnostics) reports.push_back(ToText(diagnostic));
  return reports;
}

}  // namespace velkor
