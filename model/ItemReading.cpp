// model/ItemReading.cpp: one fetch for each subject, walked through in steps.
#include "model/ItemReading.h"

#include <algorithm>
#include <map>
#include <utility>

#include "model/AppointmentOf.h"
#include "span/Globals.h"
#include "values/Error.h"

namespace velkor {
namespace {

// What a step may do, in items: each takes about seven calls to the calendar program, of up to a
// millisecond, and a fetch as long as some items.
constexpr int StepLength = 16;
constexpr int FetchLength = 4;

CalEvent EventOf(OutlookItem& appointment, std::string entryId) {
  CalEvent event;
  event.EventID = std::move(entryId);
  event.Subject = appointment.Subject();
  event.Categories = appointment.Categories();
  event.StartDate = appointment.Start();
  event.EndDate = appointment.End();
  if (!event.StartDate.IsValid() || !event.EndDate.IsValid()) {
    throw Error(errors::TypeMismatch, "\"" + event.Subject + "\" has a date that is none");
  }
  return event;
}

}  // namespace

ItemReading::ItemReading(const std::vector<SoughtAppointment>& sought, const DisplaySpan& span,
                         LocaleApi& locale) {
  const Date begin = span.ViewStartDate();
  const Date end = span.ViewEndDate();
  std::map<std::string_view, Fetch> bySubject;
  for (const SoughtAppointment& each : sought) {
    wanted_.insert(each.entryId);
    const bool isOwn = !each.recurring && each.start.IsValid() && each.end.IsValid();
    // One without a length at midnight ends before that day begins.
    const Date first = isOwn ? std::max(begin, each.start.Midnight().AddDays(-1)) : begin;
    const Date last = isOwn ? std::min(end, each.end) : end;
    const auto [place, isNew] = bySubject.try_emplace(each.subject, Fetch{{}, false, first, last});
    Fetch& fetch = place->second;
    fetch.recurring = fetch.recurring || each.recurring;
    fetch.first = std::min(fetch.first, first);
    fetch.last = std::max(fetch.last, last);
  }
  for (auto& [subject, fetch] : bySubject) {
    if (fetch.last < fetch.first) continue;
    fetch.filter = Globals::DaysRestriction(fetch.first, fetch.last, locale);
    // A text with both kinds of quotes is no value of a filter.
    if (const auto value = Globals::FilterValue(subject))
      fetch.filter += " And [Subject]=" + *value;
    fetches_.push_back(std::move(fetch));
  }
}

bool ItemReading::ReadOn(OutlookFolder& folder) {
  for (int left = StepLength; left > 0; --left) {
    if (items_) {
      Take(items_->GetNext());
    } else if (!fetches_.empty()) {
      const Fetch fetch = std::move(fetches_.back());
      fetches_.pop_back();
      items_ = folder.Items()->Restrict(fetch.filter);
      items_->Sort("[Start]");
      if (fetch.recurring) items_->IncludeRecurrences(true);
      Take(items_->GetFirst());
      left -= FetchLength;
    } else {
      return false;
    }
  }
  return true;
}

/// Null at the end of a fetch.
void ItemReading::Take(std::unique_ptr<OutlookItem> item) {
  if (!item) {
    items_.reset();
    return;
  }
  const auto appointment = AppointmentOf(std::move(item));
  if (!appointment) return;
  std::string entryId = appointment->EntryID();
  if (wanted_.contains(entryId)) events_.push_back(EventOf(*appointment, std::move(entryId)));
}

}  // namespace velkor
