// control/HoverText.cpp: what is shown about an appointment under the pointer.
#include "control/HoverText.h"

#include "model/CalEvent.h"
#include "platform/LocaleApi.h"
#include "span/DisplaySpan.h"

namespace velkor {
namespace {

/// A blank and the time of day; nothing for midnight.
std::string TimeText(Date date, LocaleApi& locale) {
  const std::string text = locale.DateToText(date);
  const std::string day = locale.ShortDate(date);
  return text.starts_with(day) ? text.substr(day.size()) : ' ' + text;
}

}  // namespace

std::string DatesText(const CalEvent& event, LocaleApi& locale) {
  return DatesText(event, locale, [&](Date day) { return locale.ShortDate(day); });
}

std::string DatesText(const CalEvent& event, LocaleApi& locale,
                      const std::function<std::string(Date)>& dayText) {
  const bool wholeDays = !HasTimeOfDay(event.StartDate) && !HasTimeOfDay(event.EndDate);
  if (!wholeDays) {
    const bool sameDay = DaysBetween(event.StartDate, event.EndDate) == 0;
    const std::string startTime = TimeText(event.StartDate, locale);
    const std::string start = dayText(event.StartDate) + startTime;
    if (event.StartDate == event.EndDate) return start;
    const std::string endTime = TimeText(event.EndDate, locale);
    const bool timeAlone = sameDay && !endTime.empty();
    return start + " to " + (timeAlone ? endTime.substr(1) : dayText(event.EndDate) + endTime);
  }
  const std::string first = dayText(event.StartDate);
  if (DaysBetween(event.StartDate, event.EndDate) <= 1) return first;
  const Date lastDay = event.EndDate.AddDays(-1);
  return first + " to " + dayText(lastDay);
}

std::string HoverText(const CalEvent& event, LocaleApi& locale) {
  std::string text = event.Subject;
  if (!text.empty()) text += '\n';
  text += DatesText(event, locale);
  if (!event.Categories.empty()) text += '\n' + event.Categories;
  return text;
}

}  // namespace velkor
