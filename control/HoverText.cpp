// control/HoverText.cpp: what is shown about an appointment under the pointer.
#include "control/HoverText.h"

#include "control/ShownDates.h"
#include "model/CalEvent.h"
#include "span/DisplaySpan.h"

namespace velkor {
namespace {

/// A blank and the time of day; nothing for midnight.
std::string TimeText(Date date, const ShownDates& dates) {
  const std::string text = dates.DateToText(date);
  const std::string day = dates.ShortDate(date);
  return text.starts_with(day) ? text.substr(day.size()) : ' ' + text;
}

}  // namespace

std::string DatesText(const CalEvent& event, const ShownDates& dates) {
  return DatesText(event, dates, [&](Date day) { return dates.ShortDate(day); });
}

std::string DatesText(const CalEvent& event, const ShownDates& dates,
                      const std::function<std::string(Date)>& dayText) {
  const bool wholeDays = !HasTimeOfDay(event.StartDate) && !HasTimeOfDay(event.EndDate);
  if (!wholeDays) {
    const bool sameDay = DaysBetween(event.StartDate, event.EndDate) == 0;
    const std::string startTime = TimeText(event.StartDate, dates);
    const std::string start = dayText(event.StartDate) + startTime;
    if (event.StartDate == event.EndDate) return start;
    const std::string endTime = TimeText(event.EndDate, dates);
    const bool timeAlone = sameDay && !endTime.empty();
    return start + " to " + (timeAlone ? endTime.substr(1) : dayText(event.EndDate) + endTime);
  }
  const std::string first = dayText(event.StartDate);
  if (DaysBetween(event.StartDate, event.EndDate) <= 1) return first;
  const Date lastDay = event.EndDate.AddDays(-1);
  return first + " to " + dayText(lastDay);
}

std::string HoverText(const CalEvent& event, const ShownDates& dates) {
  std::string text = event.Subject;
  if (!text.empty()) text += '\n';
  text += DatesText(event, dates);
  if (!event.Categories.empty()) text += '\n' + event.Categories;
  return text;
}

}  // namespace velkor
