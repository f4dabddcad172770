// hosts/yearplan/commands/CommandLine.h: the command line of yearplan, parsed and checked.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "hosts/yearplan/commands/CategoryTask.h"
#include "hosts/yearplan/commands/PrintTask.h"
#include "hosts/yearplan/commands/SyncCommand.h"
#include "model/PlannerProperties.h"
#include "values/Date.h"
#include "values/Twips.h"

namespace velkor {

enum class Command {
  /// No command, perhaps a calendar file: opens the window, or without a display draws the year
  /// and says where.
  Open,
  Render,
  Refresh,
  Inspect,
  Export,
  Print,
  Categories,
  Sync,
  Help,
  Version,
};

struct CommandLine {
  Command command = Command::Help;
  /// As they were given: calendar files, sets, addresses. None for `inspect --cache`, and for a
  /// window with the calendar that was open last.
  std::vector<std::string> calendars;
  /// Whose calendars on a server the addresses are; empty: they are addresses that anybody may
  /// read.
  std::string account;
  /// The calendar file or set that is opened: the only one of them; empty until CalendarOf told it
  /// where several or an address were given.
  std::string calendar;
  std::string cacheFile;
  /// The picture that `render` draws, the document that `export` or `print` writes.
  std::string output;
  /// None: the year that today lies in.
  std::optional<int> year;
  std::optional<Date> today;
  /// The view years of `export`; none: the year that today lies in.
  std::optional<int> fromYear;
  std::optional<int> toYear;
  bool categoriesOnly = false;
  CategoryTask categoryTask;
  PrintTask printTask;
  SyncTask syncTask;
  /// As the planner is to have them.
  PlannerProperties properties;
  std::string filter;
  bool matchAll = false;
  /// Size of the control in pixels.
  int width = 0;
  int height = 0;
  /// The first option given that a window does not take, since it keeps its own settings; empty
  /// for none.
  std::string pictureOption;
  /// Points of the grid, in twips, that `inspect` is asked about.
  std::vector<Point> points;
};

/// A command line that makes no sense; what() says why.
class UsageError : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Parses the arguments after the program's name. Throws UsageError.
CommandLine ParseCommandLine(const std::vector<std::string>& arguments);

/// Commands and options with a line on each.
std::string HelpText();

}  // namespace velkor
