// calendar/CalendarItem.cpp: changing an appointment, and the texts that it can keep.
#include "calendar/CalendarItem.h"

#include "support/values/Error.h"
#include "support/values/Text.h"

namespace velkor {
namespace {

/// The text with each line break, whatever kind it is, as `lineBreak`, and NUL as U+FFFD.
std::string WithLineBreaks(std::string_view text, std::string_view lineBreak) {
  const std::string valid = ValidUtf8(text);
  std::string result;
  result.reserve(valid.size());
  for (std::size_t i = 0; i < valid.size(); ++i) {
    if (valid[i] == '\r' || valid[i] == '\n') {
      if (valid[i] == '\r' && i + 1 < valid.size() && valid[i + 1] == '\n') ++i;
      result += lineBreak;
    } else if (valid[i] == '\0') {
      AppendCharacter(result, char32_t{0xFFFD});
    } else {
      result += valid[i];
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
  return WithLineBreaks(text, " ");
}

std::string StorableLines(std::string_view text) {
  return WithLineBreaks(text, "\r\n");
}

}  // namespace velkor
