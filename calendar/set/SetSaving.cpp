// calendar/set/SetSaving.cpp: saving into the calendar that an item is of, and what a planner asks
// of each calendar.
#include <algorithm>
#include <utility>

#include "calendar/mirror/Outbox.h"
#include "calendar/set/LocalPlaces.h"
#include "calendar/set/SetCalendar.h"

namespace velkor {
namespace {

DayOff DayOffOf(const AppointmentFields& fields, Date start, Date end) {
  const Date last = end > start ? Date::FromSeconds(end.Seconds() - 1) : start;
  return {start.Midnight(), last.Midnight(), fields.subject};
}

std::size_t CountWaiting(const SetSource& source, const std::string& dataFolder) {
  if (source.kind != SourceKind::Server) return 0;
  Mirror mirror(LocalPlaceOf(source, dataFolder));
  return Outbox(mirror).Waiting().size();
}

PlaceState StateOf(const SetPlace& place, const std::string& dataFolder) {
  PlaceState state;
  state.id = place.source.id;
  state.name = place.name;
  state.readOnly = place.IsReadOnly();
  state.hasItems = place.hasItems;
  if (place.state.Fault()) state.trouble = place.state.Fault()->Description();
  if (place.isTwice) state.trouble = "It is in the set already and shown once.";
  if (place.source.kind == SourceKind::File || place.isTwice) return state;
  // Copies of addresses tell of their last synchronisation as mirrors do.
  const MirrorState synchronised = Mirror(LocalPlaceOf(place.source, dataFolder)).State();
  if (state.name.empty()) state.name = synchronised.displayName;
  if (!synchronised.trouble.empty()) state.trouble = synchronised.trouble;
  state.offline = synchronised.offline;
  state.synchronised = synchronised.synchronised;
  state.waiting = CountWaiting(place.source, dataFolder);
  return state;
}

bool TakesDays(const AppointmentFields& fields, Date start, Date end) {
  return fields.allDay || end.Seconds() - start.Seconds() >= SecondsPerDay;
}

}  // namespace

CalendarItem SetCalendar::Saved(SetPlace& place, CalendarItem item) {
  place.state.NoteSave(place.writer->LastSave(), item);
  item.entryId.insert(0, place.prefix);
  return item;
}

std::string SetCalendar::DefaultForNew() const {
  const auto takes = [](const SetPlace& place) {
    return place.source.shown && !place.source.background && !place.IsReadOnly();
  };
  std::string first;
  for (const SetPlace& place : places_) {
    if (!takes(place)) continue;
    if (place.source.id == set_.defaultSource) return place.source.id;
    if (first.empty()) first = place.source.id;
  }
  return first;
}

SetPlace& SetCalendar::PlaceForNew(const CalendarItem& item) {
  if (!IsSet()) return places_[0];
  SetPlace* place = nullptr;
  if (IsRecord(item)) {
    if (const SetPlace* const records = RecordPlace()) place = Find(records->source.id);
  } else {
    place = Find(chosen_.empty() ? DefaultForNew() : chosen_);
  }
  if (place == nullptr) {
    throw Error(errors::BadFileMode,
                "The set " + Path() + " has no calendar that can be written; nothing was saved.",
                "Calendar");
  }
  return *place;
}

CalendarItem SetCalendar::WriteNew(const CalendarItem& item, bool reminder) {
  SetPlace& place = PlaceForNew(item);
  CalendarItem saved = Saved(place, place.writer->WriteNew(item, reminder));
  if (!IsRecord(item)) chosen_.clear();
  return saved;
}

CalendarItem SetCalendar::WriteChange(const CalendarItem& after, const ItemChange& change) {
  SetPlace& place = PlaceOf(after.entryId);
  CalendarItem own = after;
  own.entryId = OwnId(place, after.entryId);
  return Saved(place, place.writer->WriteChange(own, change));
}

void SetCalendar::WriteDeletion(const CalendarItem& item) {
  SetPlace& place = PlaceOf(item.entryId);
  CalendarItem own = item;
  own.entryId = OwnId(place, item.entryId);
  place.writer->WriteDeletion(own);
  place.state.NoteSave(place.writer->LastSave(), own);
}

void SetCalendar::WriteCategory(std::string_view from, std::string_view to, Date now) {
  std::optional<Error> fault;
  for (SetPlace& place : places_) {
    // Whoever can only be read goes on with the names that it has.
    if (IsSet() && (place.source.background || place.IsReadOnly())) continue;
    try {
      place.writer->WriteCategory(from, to, now);
      place.state.Forget();
    } catch (const Error& error) {
      if (!fault) fault = error;
    }
  }
  if (fault) throw Error(*fault);
}

std::shared_ptr<const void> SetCalendar::Hold() {
  auto holds = std::make_shared<std::vector<std::shared_ptr<const void>>>();
  for (SetPlace& place : places_) {
    if (IsSet() && (place.IsReadOnly() || place.state.Fault())) continue;
    holds->push_back(place.writer->Hold());
  }
  return holds;
}

std::string SetCalendar::Move(const std::string& entryId, const std::string& toSourceId, Date now) {
  SetPlace& from = PlaceOf(entryId);
  SetPlace* const to = Find(toSourceId);
  const CalendarFolder::Item item = folder_->Find(entryId);
  if (to == nullptr || item == nullptr) {
    throw Error(errors::CalendarFailed,
                item == nullptr ? "The appointment is no longer in the calendar."
                                : "The calendar is no longer in the set.",
                "Calendar");
  }
  if (to == &from) return entryId;
  if (from.IsReadOnly()) {
    throw Error(errors::BadFileMode,
                "The appointment \"" + item->fields.subject +
                    "\" is in a calendar for reading only; nothing was moved.",
                "Calendar");
  }
  // No other window changes it between the two steps.
  auto hold = from.writer->Hold();
  const std::string whole = from.writer->WholeOf(OwnId(from, entryId));
  CalendarItem there = Saved(*to, to->writer->TakeWhole(whole, now));
  try {
    if (from.writer->WholeOf(OwnId(from, entryId)) != whole) {
      throw Error(errors::CalendarFailed, "Another program has just changed it.", "Calendar");
    }
    folder_->Delete(entryId);
  } catch (const Error& error) {
    to->state.Forget();
    throw Error(error.Number(),
                "The appointment \"" + item->fields.subject +
                    "\" is in both calendars now, since it could not be taken out of the first "
                    "one: " +
                    error.Description(),
                error.Source());
  }
  hold.reset();
  there.occurrences = item->occurrences;
  there.changed = item->changed;
  const std::string id = there.entryId;
  if (Shows(*to, there) && !folder_->Find(id)) folder_->AddSaved(std::move(there));
  return id;
}

std::vector<PlaceState> SetCalendar::PlaceStates() const {
  std::vector<PlaceState> states;
  for (const SetPlace& place : places_) states.push_back(StateOf(place, options_.dataFolder));
  return states;
}

std::vector<std::string> SetCalendar::WaitingToBeSent() const {
  std::vector<std::string> waiting;
  for (const SetPlace& place : places_) {
    if (CountWaiting(place.source, options_.dataFolder) > 0) waiting.push_back(place.source.id);
  }
  return waiting;
}

std::vector<DayOff> SetCalendar::DaysOff() const {
  std::vector<DayOff> days;
  for (const SetPlace& place : places_) {
    if (!place.source.shown) continue;
    for (const CalendarItem& item : place.daysOff) {
      if (IsRecord(item)) continue;
      const auto add = [&](const AppointmentFields& fields, Date start, Date end) {
        if (TakesDays(fields, start, end)) days.push_back(DayOffOf(fields, start, end));
      };
      if (!item.recurring) add(item.fields, item.start, item.end);
      for (const CalendarOccurrence& one : item.occurrences) {
        const bool isOwn = one.changed < 0;
        add(isOwn ? item.fields : item.changed[static_cast<std::size_t>(one.changed)], one.start,
            one.end);
      }
    }
  }
  return days;
}

}  // namespace velkor
