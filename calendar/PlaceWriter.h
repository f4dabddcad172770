// calendar/PlaceWriter.h: what a planner of several calendars asks of the place where each is kept.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "calendar/CalendarFolder.h"

namespace velkor {

/// Tells one state of a place from another without reading it; none when the place is not there.
using PlaceMark = std::optional<std::string>;

/// Saves into one calendar, whose items have its own identifiers.
class PlaceWriter : public CalendarWriter {
 public:
  virtual PlaceMark Mark() const = 0;
  /// Whether a save would be refused whatever it saves.
  virtual bool IsReadOnly() const = 0;

  struct States {
    PlaceMark before;
    /// None where items that the save was not about may read otherwise now.
    PlaceMark after;
  };
  /// The state that the last save found, and the one that it left.
  virtual const States& LastSave() const = 0;

  /// A calendar of one appointment with every property that it has, its changed occurrences and
  /// the time zones that it names. Throws Error (CalendarFailed) when it is not there.
  virtual std::string WholeOf(const std::string& entryId) = 0;
  /// Adds such a calendar's appointment; one that is there already, just so, stays. Throws as
  /// WriteNew does, also for another appointment with the same UID.
  /// @param now  local time of saving
  /// @return the item as it is here, without the occurrences of a recurring one
  virtual CalendarItem TakeWhole(std::string_view whole, Date now) = 0;

  /// The planner itself follows its places.
  void Refresh() final {}
};

}  // namespace velkor
