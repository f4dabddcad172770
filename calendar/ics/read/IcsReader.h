// calendar/ics/read/IcsReader.h: has the worker read an iCalendar file, whose faults then harm no
// process but its own.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "calendar/CalendarStore.h"
#include "calendar/ics/read/IcsParser.h"
#include "platform/posix/WorkerProcess.h"

namespace velkor {

/// One reading of a file, which goes on by itself. Its end kills a reader that still runs.
class IcsReading : public WorkerProcess {
 public:
  /// Starts the reading and returns; what goes wrong is in the result.
  /// @param path  UTF-8
  IcsReading(std::string path, const DateWindow& window, const WorkerOptions& options = {});

  /// What was read, once the reading has ended. Throws as ReadIcsFile does.
  ParsedCalendar Result() const;

 private:
  std::string path_;
};

/// Reads a file as ParseIcsFile does, in the time zone of this process. A crash, a hang or a broken
/// answer of the worker throws Error (CalendarFailed) like everything else that keeps the file from
/// being read; it names the file and says what happened.
/// @param path  UTF-8
ParsedCalendar ReadIcsFile(const std::string& path, const DateWindow& window,
                           const WorkerOptions& options = {});

/// ParseIcsFile or ReadIcsFile.
using ReadIcs = std::function<ParsedCalendar(const std::string& path, const DateWindow& window)>;

/// Reads a file and puts it into the store as its default calendar, a folder of its own that reads
/// the file again when occurrences outside the window are asked for. For reading only: what is
/// saved there does not reach the file. Throws as `read` does.
/// @return what the file gets wrong
std::vector<Diagnostic> OpenIcsCalendar(
    CalendarStore& store, const std::string& path, const DateWindow& window,
    const ReadIcs& read = [](const std::string& file, const DateWindow& wanted) {
      return ReadIcsFile(file, wanted);
    });

}  // namespace velkor
