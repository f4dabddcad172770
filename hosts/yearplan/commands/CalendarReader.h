// hosts/yearplan/commands/CalendarReader.h: a calendar file or set as commands read it.
#pragma once

#include <iosfwd>
#include <optional>
#include <set>
#include <string>

#include "calendar/set/SetCalendar.h"
#include "span/DisplaySpan.h"

namespace velkor {

/// Nothing is ever written; what the calendars get wrong is reported on `messages`, once however
/// often they are read.
class CalendarReader {
 public:
  /// Reads nothing yet. The stream outlives this.
  CalendarReader(std::string path, std::ostream& messages)
      : path_(std::move(path)), messages_(messages) {}

  /// Reads with the occurrences of all days from one span to another, instead of those of an
  /// earlier reading. Throws Error for a calendar file, or a set's own file, that cannot be read.
  void Open(const DisplaySpan& first, const DisplaySpan& last);
  /// The file or the set, once it was opened.
  SetCalendar& Calendar() { return *calendar_; }

 private:
  void Report();

  std::string path_;
  std::ostream& messages_;
  std::set<std::string> reported_;
  std::optional<SetCalendar> calendar_;
};

}  // namespace velkor
