// hosts/yearplan/commands/CommandPlanner.h: the control of a command, started without a window.
#pragma once

#include <deque>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

#include "calendar/EmbeddedOutlook.h"
#include "calendar/set/SetCalendar.h"
#include "control/YearPlan.h"
#include "hosts/yearplan/commands/CalendarReader.h"
#include "hosts/yearplan/commands/CommandLine.h"
#include "hosts/yearplan/commands/TerminalSeams.h"
#include "platform/headless/PromptCacheUtility.h"
#include "platform/headless/ScriptedHost.h"
#include "values/Error.h"
#include "view/YearGrid.h"

namespace velkor {

/// A command uses the control as a person does: it shows years and presses buttons. The clock, the
/// properties and the stored filter are those of the command line. Cache files are brought up to
/// date in this process, right before they are loaded.
class CommandPlanner {
 public:
  /// Starts the control. What the calendar gets wrong is reported on `messages`, which outlives
  /// this. Throws Error when there is no calendar to show.
  /// @param calendar  takes what the control saves, and outlives this; null for the command line's
  ///                  own, which is never written then
  CommandPlanner(const CommandLine& line, std::ostream& messages, SetCalendar* calendar = nullptr);
  CommandPlanner(const CommandPlanner&) = delete;
  CommandPlanner& operator=(const CommandPlanner&) = delete;

  /// On show in today's year, without events.
  YearPlan& Plan() { return plan_; }
  const YearGrid& Grid() const { return plan_.Grid(); }
  TerminalSeams& Seams() { return seams_; }
  /// What kept the categories from being read whole; empty when they were.
  const std::string& Fault() const { return fault_; }

  /// The years that the command line is about.
  int FirstYear() const { return firstYear_; }
  int LastYear() const { return lastYear_; }
  /// Shows a year, its cache file brought up to date. Throws Error when that fails. Years are asked
  /// for in rising order.
  void Show(int year);
  /// The cache file of the year that was shown last.
  const std::string& CacheFile() const { return inputs_.cacheFile; }

 private:
  SetCalendar& Opened(SetCalendar* calendar);
  void ReadFrom(int year);
  void Start();
  void LetWorkRun();
  PromptCacheUtilities::Result Refresh(const RefreshInputs& inputs,
                                       const std::function<bool()>& proceed);

  const CommandLine& line_;
  std::ostream& messages_;
  TerminalSeams seams_;
  int firstYear_;
  int lastYear_;
  CalendarReader reader_;
  /// The last year whose occurrences the reader has.
  int lastRead_ = 0;
  SetCalendar& calendar_;
  std::deque<std::function<void()>> work_;
  PromptCacheUtilities cacheUtilities_;
  EmbeddedOutlook outlook_;
  ScriptedHost host_;
  YearPlan plan_;
  std::string fault_;
  /// Of the last refresh.
  RefreshInputs inputs_;
  std::optional<Error> failure_;
};

/// A line for each name of the filter that no event carries, and one on why nothing is shown.
void RemarkOn(const YearGrid& grid, std::ostream& messages);

}  // namespace velkor
