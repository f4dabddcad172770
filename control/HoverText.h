// control/HoverText.h: what is shown about an appointment under the pointer.
#pragma once

#include <functional>
#include <string>

namespace velkor {

class Date;
struct CalEvent;
class ShownDates;

/// First and last day or moment of an event. Whole days are told without times, by their last day.
std::string DatesText(const CalEvent& event, const ShownDates& dates);
/// The same with days written in another way.
std::string DatesText(const CalEvent& event, const ShownDates& dates,
                      const std::function<std::string(Date)>& dayText);

/// Subject, dates and categories, a line each; what is empty has no line.
std::string HoverText(const CalEvent& event, const ShownDates& dates);

}  // namespace velkor
