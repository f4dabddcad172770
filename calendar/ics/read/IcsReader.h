// calendar/ics/read/IcsReader.h: reads an iCalendar file in a process of its own that can be
// stopped.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "calendar/CalendarStore.h"
#include "calendar/ics/read/IcsParser.h"

class QObject;
class QProcess;

namespace velkor {

struct IcsReaderOptions {
  /// The reading program; empty for yearplan-read beside the running one.
  std::string program;
  std::chrono::milliseconds timeLimit{30'000};
  /// Bytes that the reading process may use.
  std::size_t memoryLimit = std::size_t{2} << 30;
};

/// One reading of a file, which goes on by itself. Its end kills a reader that still runs, without
/// waiting for it for long.
class IcsReading {
 public:
  /// Starts the reading process and returns; what goes wrong is in the result.
  /// @param path  UTF-8
  IcsReading(std::string path, const DateWindow& window, const IcsReaderOptions& options = {});
  ~IcsReading();
  IcsReading(const IcsReading&) = delete;
  IcsReading& operator=(const IcsReading&) = delete;

  /// Lets the event loop see to the reading and calls back from there, once, when it has ended or
  /// reached its time limit, which counts from here. The callback may destroy this.
  void WhenEnded(std::function<void()> onEnd);
  /// Waits for the end, at most for the time limit.
  void Wait();
  /// What was read, once the reading has ended. Throws as ReadIcsFile does.
  ParsedCalendar Result() const;

 private:
  void Take();
  void End(std::string fault);
  void EndTooLate();
  void PostEnd();

  std::string path_;
  std::chrono::milliseconds timeLimit_;
  std::unique_ptr<QProcess> process_;
  /// What is delivered to it is not delivered after the end of this.
  std::unique_ptr<QObject> receiver_;
  std::string answer_;
  /// What went wrong; empty when nothing did.
  std::string fault_;
  bool ended_ = false;
  std::function<void()> onEnd_;
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
