// hosts/yearplan/CalendarSession.h: one year of a calendar file: refreshed, loaded and laid out.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "hosts/yearplan/CalendarPlace.h"
#include "hosts/yearplan/CommandLine.h"
#include "model/CachePaths.h"
#include "platform/desktop/DesktopFiles.h"
#include "platform/desktop/DesktopLocale.h"
#include "platform/desktop/DesktopRegistry.h"
#include "platform/desktop/TerminalMessageBoxes.h"
#include "view/YearGrid.h"
#include "view/span/Locale.h"

namespace velkor {

class OutlookApplication;
class OutlookFolder;

struct PlannedYear {
  YearGrid grid;
  CalendarNames names;
  /// The face for the user's code page.
  Font font;
  Date today;
};

/// What a command line asks about, on this machine. The calendar file is read and never written;
/// what it gets wrong is reported on `messages`. Members throw Error when there is no year to show.
class CalendarSession {
 public:
  /// Both outlive this.
  CalendarSession(const CommandLine& line, std::ostream& messages);

  const DisplaySpan& Span() const { return span_; }
  /// The file given by --cache, else the one that Refresh wrote.
  const std::string& CacheFileName() const { return paths_.cacheFile; }

  /// Brings the year's cache file up to date from the calendar.
  /// @return records written
  std::size_t Refresh();

  /// The year from its cache file; with a calendar, refreshed first.
  PlannedYear Plan();

 private:
  std::size_t RefreshFolder(OutlookFolder& folder, OutlookApplication& outlook);
  void ReadCategories(OutlookFolder& folder);
  EventCollection LoadEvents(const EventFields& fields);
  CategoryTable TableOfCache();
  void ReportUnknownNames(const YearGrid& grid);

  const CommandLine& line_;
  std::ostream& messages_;
  DesktopClock clock_;
  CalendarEnvironment environment_;
  DesktopFiles files_;
  DesktopLocale locale_;
  DesktopRegistry registry_;
  TerminalMessageBoxes messageBoxes_;
  Date today_;
  DisplaySpan span_;
  std::string listSeparator_;
  CachePaths paths_;
  std::optional<CategoryTable> table_;
};

}  // namespace velkor
