// tests/model/SampleEvents.h: events and category tables for tests, in few words.
#pragma once

#include <string>
#include <utility>

#include "model/CalEvent.h"
#include "model/CategoryTable.h"

namespace velkor {

/// An event as a source gives it, nothing derived yet.
inline CalEvent SampleEvent(std::string id, Date start, Date end, std::string categories = {}) {
  CalEvent event;
  event.Subject = "Subject of " + id;
  event.EventID = std::move(id);
  event.Categories = std::move(categories);
  event.StartDate = start;
  event.EndDate = end;
  return event;
}

inline Date At(int year, int month, int day, int hour = 0, int minute = 0) {
  return Date::FromFields({year, month, day, hour, minute, 0});
}

/// Leave 1, Key Customer 2, leave 3, Other 4; colours that nothing else is drawn in.
inline CategoryTable SampleCategories() {
  return CategoryTable({{"Leave", Colour::FromRgb(10, 120, 40)},
                        {"Key Customer", Colour::FromRgb(30, 60, 200)},
                        {"leave", Colour::FromRgb(200, 30, 160)},
                        {"Other", Colour{13421772}}});
}

}  // namespace velkor
