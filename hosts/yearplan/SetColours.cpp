// hosts/yearplan/SetColours.cpp: from an event over its source to a colour.
#include "hosts/yearplan/SetColours.h"

#include "hosts/yearplan/window/OpenSet.h"
#include "model/CalEvent.h"

namespace velkor {

EventColour ColoursOf(const SetCalendar& calendar) {
  if (calendar.Set().barColours == BarColours::Category) return {};
  return [&calendar](const CalEvent& event) -> std::optional<Colour> {
    const SetSource* const source = calendar.SourceOf(event.EventID);
    if (source == nullptr) return std::nullopt;
    return ColourOf(calendar.Set(), *source);
  };
}

}  // namespace velkor
