// calendar/IcsReader.h: reads an iCalendar file in a process of its own that can be stopped.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

#include "calendar/CalendarStore.h"
#include "calendar/IcsParser.h"

namespace velkor {

struct IcsReaderOptions {
  /// The reading program; empty for yearplan-read beside the running one.
  std::string program;
  std::chrono::milliseconds timeLimit{30'000};
  /// Bytes that the reading process may use.
  std::size_t memoryLimit = std::size_t{2} << 30;
};

/// Reads a file as ParseIcs does, in the time zone of this process. A crash, a hang or a broken
/// answer of the reading process throws Error (CalendarFailed) like everything else that keeps the
/// file from being read; it names the file and says what happened.
/// @param path  UTF-8
ParsedCalendar ReadIcsFile(const std::string& path, const DateWindow& window,
                           const IcsReaderOptions& options = {});

/// Reads a file and puts it into the store as its default calendar, a folder of its own that reads
/// the file again when occurrences outside the window are asked for. For reading only: what is
/// saved there does not reach the file. Throws as ReadIcsFile does.
/// @return what the file gets wrong
std::vector<Diagnostic> OpenIcsCalendar(CalendarStore& store, const std::string& path,
                                        const DateWindow& window,
                                        const IcsReaderOptions& options = {});

}  // namespace velkor
