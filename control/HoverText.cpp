// control/HoverText.cpp: what is shown about an appointment under the pointer.
#include "control/HoverText.h"

#include "model/CalEvent.h"
#include "platform/LocaleApi.h"
#include "span/DisplaySpan.h"

namespace velkor {

std::string DatesText(const CalEvent& event, LocaleApi& locale) {
  const bool wholeDays = !HasTimeOfDay(event.StartDate) && !HasTimeOfDay(event.EndDate);
  if (!wholeDays) {
    const bool sameDay = DaysBetween(event.StartDate, event.EndDate) == 0;
    const std::string start = locale.DateToText(event.StartDate);
    if (event.StartDate == event.EndDate) return start;
    std::string end = locale.DateToText(event.EndDate);
    const std::string day = locale.ShortDate(event.EndDate) + ' ';
    if (sameDay && end.starts_with(day)) end.erase(0, day.size());
    return start + " to " + end;
  }
  const std::string first = locale.ShortDate(event.StartDate);
  if (DaysBetween(event.StartDate, event.EndDate) <= 1) return first;
  const Date lastDay = event.EndDate.AddDays(-1);
  return first + " to " + locale.ShortDate(lastDay);
}

std::string HoverText(const CalEvent& event, LocaleApi& locale) {
  std::string text = event.Subject;
  if (!text.empty()) text += '\n';
  text += DatesText(event, locale);
  if (!event.Categories.empty()) text += '\n' + event.Categories;
  return text;
}

}  // namespace velkor
