// calendar/ics/read/IcsParser.cpp: the calendar's name, and an item for each appointment.
#include "calendar/ics/read/IcsParser.h"

#include "calendar/ics/read/IcsDocument.h"
#include "calendar/ics/read/IcsOccurrences.h"
#include "calendar/ics/read/IcsPlainText.h"
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

}  // namespace velkor
