// calendar/CalendarItem.cpp: changing an appointment, and the texts that it can keep.
#include "calendar/CalendarItem.h"

#include "values/Error.h"
#include "values/Text.h"

namespace velkor {
namespace {

/// The text with each line break, whatever kind it is, and each tab as told, and other controls as
/// U+FFFD.
std::string WithoutControls(std::string_view text, std::string_view lineBreak, char32_t tab) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const char32_t c = TakeCharacter(text);
    const bool breaksLine = c == '\r' || c == '\n' || c == 0x2028 || c == 0x2029;
    if (c == '\r' && text.starts_with('\n')) text.remove_prefix(1);
    if (breaksLine) {
      result += lineBreak;
    } else if (c == '\t') {
      AppendCharacter(result, tab);
    } else {
      AppendCharacter(result, IsControl(c) ? char32_t{0xFFFD} : c);
    }
  }
  return result;
}

}  // namespace

bool SameContent(const CalendarItem& a, const CalendarItem& b) {
  if (!a.contentMark.empty() && !b.contentMark.empty()) return a.contentMark == b.contentMark;
  return a.fields == b.fields && a.start == b.start && a.end == b.end &&
         a.messageClass == b.messageClass && a.itemClass == b.itemClass &&
         a.recurring == b.recurring && a.changed == b.changed && a.occurrences == b.occurrences;
}

CalendarItem WithChange(const CalendarItem& item, const ItemChange& change) {
  if (item.recurring && change.SetsTimes()) {
    throw Error(errors::CalendarFailed,
                "The start, the end and the all-day mark of the recurring appointment \"" +
                    item.fields.subject + "\" cannot be changed here.",
                "Calendar");
  }
  CalendarItem result = item;
  if (change.subject) result.fields.subject = *change.subject;
  if (change.categories) result.fields.categories = *change.categories;
  if (change.location) result.fields.location = *change.location;
  if (change.body) result.fields.body = *change.body;
  if (change.start) result.start = *change.start;
  if (change.end) result.end = *change.end;
  if (change.allDay) result.fields.allDay = *change.allDay;
  if (result.end < result.start) {
    throw Error(errors::CalendarFailed,
                "The appointment \"" + result.fields.subject + "\" would end before it starts.",
                "Calendar");
  }
  if (result.fields.allDay && change.SetsTimes()) {
    const Date firstDay = result.start.Midnight();
    const Date lastDay = result.end.Midnight();
    const bool endsAtMidnight = lastDay == result.end && lastDay > firstDay;
    result.start = firstDay;
    result.end = endsAtMidnight ? lastDay : lastDay.AddDays(1);
  }
  if (!result.start.IsValid() || !result.end.IsValid()) {
    throw Error(errors::CalendarFailed,
                "The appointment \"" + result.fields.subject +
                    "\" would lie outside the years 100 to 9999.",
                "Calendar");
  }
  return result;
}

std::string StorableLine(std::string_view text) {
  return WithoutControls(text, " ", U' ');
}

std::string StorableLines(std::string_view text) {
  return WithoutControls(text, "\r\n", U'\t');
}

}  // namespace velkor
