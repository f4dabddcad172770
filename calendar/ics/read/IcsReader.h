// calendar/ics/read/IcsReader.h: has the worker read calendars, whose faults then harm no process
// but its own.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "calendar/ics/read/IcsParser.h"
#include "platform/posix/WorkerProcess.h"
#include "values/Error.h"

namespace velkor {

/// What became of one calendar: it was read, or why not.
struct IcsOutcome {
  ParsedCalendar calendar = {};
  std::optional<Error> error = {};
};

/// One reading of a calendar file or of some calendars of a set, which goes on by itself. Its end
/// kills a reader that still runs.
class IcsReading : public WorkerProcess {
 public:
  /// Starts the reading and returns; what goes wrong is in the results.
  /// @param path  UTF-8
  /// @param ids   of a set the calendars that are read; none for a calendar file
  IcsReading(std::string path, const DateWindow& window, const WorkerOptions& options = {},
             const std::vector<std::string>& ids = {});

  /// What was read, once the reading has ended: one for each identifier, in their order, or the one
  /// of the file. A worker that dies keeps nothing from those that it had read by then.
  std::vector<IcsOutcome> Results() const;

 private:
  IcsOutcome FaultOf(const std::string& why) const;

  std::string path_;
  std::size_t count_;
};

/// Reads a file as ParseIcsFile does, in the time zone of this process. A crash, a hang or a broken
/// answer of the worker throws Error (CalendarFailed) like everything else that keeps the file from
/// being read; it names the file and says what happened.
/// @param path  UTF-8
ParsedCalendar ReadIcsFile(const std::string& path, const DateWindow& window,
                           const WorkerOptions& options = {});

}  // namespace velkor
