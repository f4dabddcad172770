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

std::string TroubleOf(const PlaceState& state, const CalendarSet& set) {
  const SetSource* const source = FindSource(set, state.id);
  const bool isFetched = source == nullptr || source->kind == SourceKind::File || state.hasItems;
  return state.trouble + (isFetched ? "" : " Run yearplan sync first.");
}

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
  bool isRead = false;
  for (const PlaceState& state : calendar_->PlaceStates()) {
    isRead = isRead || state.hasItems;
    if (!state.trouble.empty()) texts.push_back(TroubleOf(state, calendar_->Set()));
  }
  if (!isRead && !texts.empty()) throw Error(errors::CalendarFailed, texts.front(), "Calendar");
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
