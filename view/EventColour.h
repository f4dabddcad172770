// view/EventColour.h: gives bars colours of their own, as those of the calendars that they are of.
#pragma once

#include <functional>
#include <optional>

#include "values/Colour.h"

namespace velkor {

struct CalEvent;

/// None: the colour of the event's category. It is asked whenever a bar is drawn.
using EventColour = std::function<std::optional<Colour>(const CalEvent&)>;

}  // namespace velkor
