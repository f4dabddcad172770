// hosts/yearplan/window/CalendarChoice.h: in which calendar of a set an appointment lies, and where
// it may go.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "values/Colour.h"

namespace velkor {

struct CalendarChoice {
  struct Calendar {
    std::string id;
    std::string name;
    Colour colour;
    /// Why nothing can be written there; empty: it can.
    std::string refusal;
  };

  /// Empty where there is nothing to choose from.
  std::vector<Calendar> calendars = {};
  /// The one that it lies in; of a new one, the one that takes new appointments.
  std::string current = {};
  bool isNew = false;
  /// Called for a new one before it is saved, for another one after it, when a calendar other than
  /// the current one was chosen. Throws Error when it cannot go there; it stays where it is then.
  std::function<void(const std::string& id)> put = nullptr;
};

}  // namespace velkor
