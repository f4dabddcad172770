// hosts/yearplan/commands/CalendarReader.h: a calendar file as commands read it.
#pragma once

#include <iosfwd>
#include <set>
#include <string>
#include <vector>

#include "calendar/CalendarStore.h"
#include "calendar/ics/read/Diagnostics.h"
#include "span/DisplaySpan.h"

namespace velkor {

/// The file is never written; what it gets wrong is reported on `messages`, once however often it
/// is read.
class CalendarReader {
 public:
  /// Reads nothing yet. The stream outlives this.
  CalendarReader(std::string path, std::ostream& messages)
      : path_(std::move(path)), messages_(messages) {}

  /// Reads the file with the occurrences of all days from one span to another, instead of those of
  /// an earlier reading. Throws Error.
  void Open(const DisplaySpan& first, const DisplaySpan& last);
  /// Its default calendar is the file, once it was opened.
  CalendarStore& Store() { return store_; }

 private:
  void Report(const std::vector<Diagnostic>& diagnostics);

  std::string path_;
  std::ostream& messages_;
  std::set<std::string> reported_;
  CalendarStore store_{"yearplan"};
};

}  // namespace velkor
