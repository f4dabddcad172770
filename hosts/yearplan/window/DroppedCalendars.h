// hosts/yearplan/window/DroppedCalendars.h: the calendars among what is dragged over the window.
#pragma once

#include <string>
#include <vector>

#include "calendar/set/CalendarSet.h"

class QMimeData;

namespace velkor {

struct DroppedCalendars {
  /// Path of a set; empty for none. It goes before all others.
  std::string set;
  /// Calendar files and addresses.
  std::vector<SetSource> sources;

  bool IsEmpty() const { return set.empty() && sources.empty(); }
};

DroppedCalendars DroppedCalendarsOf(const QMimeData& data);

}  // namespace velkor
