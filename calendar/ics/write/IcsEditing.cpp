// calendar/ics/write/IcsEditing.cpp: splices, and what surrounds an edit of a file's text.
#include "calendar/ics/write/IcsEditing.h"

#include <algorithm>
#include <utility>

#include "calendar/ics/read/IcsPlainText.h"
#include "values/Error.h"

namespace velkor {

void FailToEdit(const std::string& what) {
  throw Error(errors::CalendarFailed, what, "Calendar");
}

const IcsAppointment& FindAppointment(const IcsDocument& document, const std::string& name,
                                      const std::string& entryId) {
  for (const IcsAppointment& appointment : document.Appointments()) {
    if (appointment.entryId == entryId) return appointment;
  }
  FailToEdit("The appointment is no longer in the calendar file " + name +
             "; another program has changed it.");
}

std::set<std::string> IdsOf(const IcsDocument& document) {
  std::set<std::string> ids;
  for (const IcsAppointment& appointment : document.Appointments()) ids.insert(appointment.entryId);
  return ids;
}

std::string WithSplices(std::string_view bytes, std::vector<Splice> splices) {
  std::sort(splices.begin(), splices.end(),
            [](const Splice& a, const Splice& b) { return a.begin < b.begin; });
  std::string result;
  std::size_t at = 0;
  for (const Splice& splice : splices) {
    result.append(bytes.substr(at, splice.begin - at)).append(splice.text);
    at = splice.end;
  }
  return result.append(bytes.substr(at));
}

bool HasUnfinished(const IcsDocument& document) {
  const auto& components = document.Scan().components;
  return std::any_of(components.begin(), components.end(),
                     [](const IcsComponent& one) { return one.unfinished; });
}

std::string LineEndAt(std::string_view bytes, std::size_t place) {
  std::size_t at = place;
  if (at == 0 || bytes[at - 1] != '\n') {
    const std::size_t first = bytes.find('\n');
    if (first == std::string_view::npos) return "\r\n";
    at = first + 1;
  }
  return at >= 2 && bytes[at - 2] == '\r' ? "\r\n" : "\n";
}

IcsEdit InFormOf(std::string_view bytes, const std::string& name, const IcsLimits& limits,
                 const std::function<IcsEdit(std::string_view text)>& edit) {
  const IcsPlainText plain(bytes, name);
  IcsEdit made = edit(plain.Text());
  const bool tooLarge = made.bytes.size() > limits.fileSize;
  made.bytes = plain.WithText(std::move(made.bytes));
  if (tooLarge || made.bytes.size() > limits.fileSize) {
    FailToEdit("The calendar file " + name + " would be larger than " +
               std::to_string(limits.fileSize >> 20) + " MiB; nothing was saved.");
  }
  return made;
}

}  // namespace velkor
