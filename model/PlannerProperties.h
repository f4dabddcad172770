// model/PlannerProperties.h: holds the properties of one planner, which everybody reads there.
#pragma once

#include <cstdint>
#include <string>

namespace velkor {

/// In the order in which they are persisted, with their defaults; see control/PropertyTable.h.
struct PlannerProperties {
  /// Path of the calendar folder, components joined by backslashes; empty or "Calendar" is the
  /// default calendar. Read at start-up.
  std::string Folder{};
  /// Also show events that begin and end within one day. Counts from the next drawing.
  bool AllEvents = false;
  /// Write subjects into the bars. Counts from the next drawing.
  bool DisplaySubject = false;
  /// Planners of one title share colours and filter settings.
  std::string TitleName = "Default";
  /// Hide events that name no known category. Counts from the next load.
  bool HideNonCategoryItems = false;
  /// The message class that an added or changed item must have to come into the view.
  std::string AppointmentForm = "IPM.Appointment";
  /// First month of the span, 1 to 12. Counts from the next change of year.
  std::int16_t FirstMonth = 1;

  friend bool operator==(const PlannerProperties&, const PlannerProperties&) = default;
};

}  // namespace velkor
