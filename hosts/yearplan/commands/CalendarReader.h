// hosts/yearplan/commands/CalendarReader.h: a calendar file and its cache files, as the commands
// read them.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/CalendarStore.h"
#include "calendar/EmbeddedOutlook.h"
#include "calendar/ics/read/Diagnostics.h"
#include "hosts/yearplan/commands/CommandLine.h"
#include "hosts/yearplan/commands/TerminalSeams.h"
#include "model/CachePaths.h"
#include "model/CategoryTable.h"
#include "model/EventCollection.h"
#include "model/EventFields.h"
#include "span/CategoryFilter.h"

namespace velkor {

/// The calendar file is never written; what it gets wrong is reported on `messages`, once however
/// often it is read. Members throw Error.
class CalendarReader {
 public:
  /// Both outlive this.
  CalendarReader(const CommandLine& line, std::ostream& messages);
  CalendarReader(const CalendarReader&) = delete;
  CalendarReader& operator=(const CalendarReader&) = delete;

  TerminalSeams& Seams() { return seams_; }
  OutlookApplication& Outlook() { return outlook_; }

  /// The filter of the command line.
  CategoryFilter Filter() const;

  /// Reads the file with the occurrences of all days from one span to another, instead of those of
  /// an earlier reading. Those below this work on what was read.
  void Open(const DisplaySpan& first, const DisplaySpan& last);
  /// The colours of the planner's title, or first ones where the calendar holds none.
  const CategoryTable& Categories() const { return *table_; }
  /// The cache files of the calendar's user.
  CachePaths PathsOf(int viewYear);
  /// Brings a span's cache file up to date.
  /// @return records written
  std::size_t Refresh(const DisplaySpan& span);
  /// The item behind an EventID.
  std::unique_ptr<OutlookItem> ItemOf(std::string_view eventId);

  /// The events of a cache file; a part of one is reported. Needs no open calendar.
  EventCollection Load(const std::string& cacheFile, const EventFields& fields);

 private:
  void Report(const std::vector<Diagnostic>& diagnostics);
  void ReadCategories();

  const CommandLine& line_;
  std::ostream& messages_;
  TerminalSeams seams_;
  std::set<std::string> reported_;
  CalendarStore store_{"yearplan"};
  EmbeddedOutlook outlook_;
  std::unique_ptr<OutlookNamespace> session_;
  std::unique_ptr<OutlookFolder> folder_;
  std::optional<CategoryTable> table_;
};

}  // namespace velkor
