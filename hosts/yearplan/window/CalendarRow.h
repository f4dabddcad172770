// hosts/yearplan/window/CalendarRow.h: what the calendar pane tells of one calendar.
#pragma once

#include <QString>
#include <cstddef>
#include <string>

#include "values/Colour.h"

namespace velkor {

struct CalendarRow {
  std::string id = {};
  std::string name = {};
  Colour colour = {};
  bool shown = true;
  bool daysOff = false;
  /// Takes new appointments.
  bool isDefault = false;
  bool readOnly = false;
  /// Lies on another machine and can be brought up to date.
  bool remote = false;
  bool busy = false;
  bool offline = false;
  /// When it was last brought up to date, as people write it; empty: never.
  std::string since = {};
  /// Why it cannot be read or brought up to date; empty: it can.
  std::string trouble = {};
  /// Edits that are not sent yet, and those that the server refused.
  std::size_t waiting = 0;
  std::size_t refused = 0;

  bool IsFailing() const { return !trouble.empty() && !offline; }

  friend bool operator==(const CalendarRow&, const CalendarRow&) = default;
};

/// The state in a few words, as "Offline since 14:05, read-only".
QString StateOf(const CalendarRow& row);

}  // namespace velkor
