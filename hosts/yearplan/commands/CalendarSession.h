// hosts/yearplan/commands/CalendarSession.h: one year of a calendar file: refreshed, loaded and
// laid out.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>

#include "hosts/yearplan/commands/CalendarReader.h"
#include "span/Locale.h"
#include "view/YearGrid.h"

namespace velkor {

struct PlannedYear {
  YearGrid grid;
  CalendarNames names;
  /// The face for the user's code page.
  Font font;
  Date today;
};

/// The view year of a command line on this machine. Members throw Error when there is no year to
/// show.
class CalendarSession {
 public:
  /// Both outlive this. What the calendar file gets wrong is reported on `messages`.
  CalendarSession(const CommandLine& line, std::ostream& messages);

  const DisplaySpan& Span() const { return span_; }
  /// The file given by --cache, else the one that Refresh wrote.
  const std::string& CacheFileName() const { return cacheFile_; }

  /// Why there is no cache file on a disk; empty when there is one.
  const std::string& CacheTrouble() { return reader_.Seams().environment.Trouble(); }

  /// Brings the year's cache file up to date from the calendar.
  /// @return records written
  std::size_t Refresh();

  /// The year from its cache file; with a calendar, refreshed first.
  PlannedYear Plan();

 private:
  CategoryTable TableOfCache();

  const CommandLine& line_;
  std::ostream& messages_;
  CalendarReader reader_;
  Date today_;
  DisplaySpan span_;
  std::string cacheFile_;
};

}  // namespace velkor
