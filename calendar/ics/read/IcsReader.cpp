// calendar/ics/read/IcsReader.cpp: the worker's job of reading, and its answer taken apart.
#include "calendar/ics/read/IcsReader.h"

#include <QFileInfo>
#include <utility>

#include "calendar/ics/file/ShortHash.h"
#include "calendar/ics/read/IcsAnswer.h"
#include "values/Error.h"

namespace velkor {
namespace {

[[noreturn]] void Fail(const std::string& path, const std::string& why) {
  throw Error(errors::CalendarFailed,
              "The calendar file " + path + " could not be read: " + why + ".", "Calendar");
}

std::string FolderIdOf(const std::string& path) {
  return ShortHash(QFileInfo(QString::fromStdString(path)).absoluteFilePath().toStdString());
}

}  // namespace

IcsReading::IcsReading(std::string path, const DateWindow& window, const WorkerOptions& options)
    : WorkerProcess({"items", path, std::to_string(window.from.Seconds()),
                     std::to_string(window.to.Seconds())},
                    options),
      path_(std::move(path)) {}

ParsedCalendar IcsReading::Result() const {
  if (!Fault().empty()) Fail(path_, Fault());
  try {
    return DecodeAnswer(Answer());
  } catch (const Error& error) {
    if (error.Source() == "Answer") Fail(path_, error.Description());
    throw;
  }
}

ParsedCalendar ReadIcsFile(const std::string& path, const DateWindow& window,
                           const WorkerOptions& options) {
  IcsReading reading(path, window, options);
  reading.Wait();
  return reading.Result();
}

std::vector<Diagnostic> OpenIcsCalendar(CalendarStore& store, const std::string& path,
                                        const DateWindow& window, const ReadIcs& read) {
  ParsedCalendar calendar = read(path, window);
  CalendarFolder& folder =
      store.AddFolder(std::move(calendar.name), FolderIdOf(path), outlook::ItemTypeAppointment);
  folder.Replace(std::move(calendar.items), window);
  folder.SetLoader([path, read](const DateWindow& wider) { return read(path, wider).items; });
  store.SetDefaultCalendar(&folder);
  return std::move(calendar.diagnostics);
}

}  // namespace velkor
