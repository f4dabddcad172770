// hosts/yearplan/commands/CalendarReader.cpp: reading calendars and telling their faults.
#include "hosts/yearplan/commands/CalendarReader.h"

#include <cstddef>
#include <ostream>
#include <utility>
#include <vector>

#include "hosts/CalendarRefresh.h"
#include "hosts/yearplan/CalendarOptions.h"

namespace velkor {
namespace {

constexpr std::size_t MostMessages = 20;

}  // namespace

void CalendarReader::Open(const DisplaySpan& first, const DisplaySpan& last) {
  const DateWindow window{WindowOf(first).from, WindowOf(last).to};
  if (calendar_) {
    calendar_->Read(window);
  } else {
    calendar_.emplace(path_, window, OptionsFor(path_));
    calendar_->Folder().SetWriter(nullptr);
  }
  Report();
}

void CalendarReader::Report() {
  std::vector<std::string> texts;
  for (const PlaceState& state : calendar_->PlaceStates()) {
    if (!state.trouble.empty()) texts.push_back(state.trouble);
  }
  for (const Diagnostic& diagnostic : calendar_->Diagnostics()) {
    texts.push_back(ToText(diagnostic));
  }
  std::size_t more = 0;
  for (std::string& text : texts) {
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
