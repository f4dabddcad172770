// calendar/ics/read/IcsParser.cpp: reads the file, names the calendar and makes an item of each
// appointment.
#include "calendar/ics/read/IcsParser.h"

#include <filesystem>
#include <fstream>
#include <new>

#include "calendar/ics/file/CalendarFile.h"
#include "calendar/ics/read/IcsDocument.h"
#include "calendar/ics/read/IcsOccurrences.h"
#include "calendar/ics/read/IcsPlainText.h"
#include "values/Error.h"
#include "values/Text.h"

namespace velkor {
namespace {

std::string NameOf(const std::string& file, const IcsScan& scan) {
  if (!scan.calendarName.empty()) return scan.calendarName;
  std::string name = file.substr(file.find_last_of("/\\") + 1);
  constexpr std::string_view Extension = ".ics";
  if (name.size() > Extension.size() &&
      SameName(std::string_view(name).substr(name.size() - Extension.size()), Extension)) {
    name.resize(name.size() - Extension.size());
  }
  return name;
}

[[noreturn]] void Fail(const std::string& path, const std::string& why) {
  throw Error(errors::CalendarFailed, "The calendar file " + path + " " + why, "Calendar");
}

/// What a stopped save left is no reason not to read; the next save tells when it stays.
void FinishStoppedSave(const std::string& path) {
  try {
    CalendarFile(path).FinishStoppedSave();
  } catch (const Error&) {
    // The file may be gone, or for reading only.
  }
}

/// A little more than `longest` at most, which then is too much.
std::string ReadBytes(const std::string& path, std::size_t longest) {
  std::error_code code;
  const auto status = std::filesystem::status(path, code);
  if (!std::filesystem::exists(status)) Fail(path, "does not exist.");
  if (std::filesystem::is_directory(status)) Fail(path, "is a folder.");
  if (!std::filesystem::is_regular_file(status)) Fail(path, "is no ordinary file.");
  std::ifstream file(path, std::ios::binary);
  if (!file) Fail(path, "cannot be opened.");
  std::string bytes;
  std::string piece(std::size_t{1} << 20, '\0');
  while (bytes.size() <= longest && !file.eof()) {
    file.read(piece.data(), static_cast<std::streamsize>(piece.size()));
    if (file.bad()) Fail(path, "cannot be read to its end.");
    bytes.append(piece, 0, static_cast<std::size_t>(file.gcount()));
  }
  return bytes;
}

}  // namespace

ParsedCalendar ParseIcs(std::string_view bytes, const std::string& name, const DateWindow& window,
                        const IcsLimits& limits) {
  Diagnostics diagnostics(name, limits.diagnostics);
  const IcsPlainText plain(bytes, name);
  const IcsDocument document(plain.Text(), name, limits, diagnostics);
  ParsedCalendar calendar;
  calendar.name = NameOf(name, document.Scan());
  IcsItemBuilder items(window, limits, diagnostics);
  for (const IcsAppointment& appointment : document.Appointments()) {
    calendar.items.push_back(items.Item(document.Events()[appointment.main],
                                        document.ChangedOf(appointment), appointment.entryId));
  }
  calendar.diagnostics = diagnostics.Take();
  return calendar;
}

ParsedCalendar ParseIcsFile(const std::string& path, const DateWindow& window) {
  FinishStoppedSave(path);
  try {
    const IcsLimits limits;
    return ParseIcs(ReadBytes(path, limits.fileSize), path, window, limits);
  } catch (const std::bad_alloc&) {
    Fail(path, "needs more memory than is allowed.");
  }
}

}  // namespace velkor
