// hosts/yearplan/commands/CalendarReader.cpp: reading a calendar file and telling its faults.
#include "hosts/yearplan/commands/CalendarReader.h"

#include <cstddef>
#include <ostream>
#include <utility>

#include "calendar/ics/read/IcsReader.h"
#include "hosts/CalendarRefresh.h"

namespace velkor {
namespace {

constexpr std::size_t MostMessages = 20;

}  // namespace

void CalendarReader::Open(const DisplaySpan& first, const DisplaySpan& last) {
  const DateWindow window{WindowOf(first).from, WindowOf(last).to};
  if (CalendarFolder* const read = store_.DefaultCalendar()) {
    ParsedCalendar calendar = ReadIcsFile(path_, window);
    Report(calendar.diagnostics);
    read->Replace(std::move(calendar.items), window);
  } else {
    Report(OpenIcsCalendar(store_, path_, window));
  }
}

void CalendarReader::Report(const std::vector<Diagnostic>& diagnostics) {
  std::size_t more = 0;
  for (const Diagnostic& diagnostic : diagnostics) {
    std::string text = ToText(diagnostic);
    if (reported_.contains(text)) continue;
    if (reported_.size() < MostMessages) {
      messages_ << text << '\n';
    } else {
      ++more;
    }
    reported_.insert(std::move(text));
  }
  if (more > 0) messages_ << "... and " << more << " more\n";
}

}  // namespace velkor
