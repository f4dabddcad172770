// calendar/ics/read/IcsOccurrences.cpp: start and end of occurrences, removed and changed ones.
#include "calendar/ics/read/IcsOccurrences.h"

#include <algorithm>
#include <map>
#include <unordered_set>
#include <utility>

#include "calendar/ics/read/IcsAppointments.h"
#include "calendar/ics/read/IcsRule.h"
#include "calendar/ics/read/IcsRuleDays.h"
#include "values/Date.h"

namespace velkor {
namespace {

Date ToDate(WallSeconds wall) {
  return Date::FromSeconds(wall);
}

/// Local time after `onClock` seconds of the zone's clock and then `exact` seconds that pass.
/// Beyond the calendar's years the zone counts as it does where they end.
WallSeconds After(const IcsTime& start, WallSeconds onClock, std::int64_t exact = 0) {
  const WallSeconds wall = start.wall + onClock;
  const WallSeconds known = std::clamp(wall, FirstWall, LastWall);
  return start.zone->ToLocal(known, exact) + (wall - known);
}

WallSeconds After(const IcsTime& start, const IcsDuration& duration) {
  return After(start, duration.days * SecondsPerDay, duration.seconds);
}

int YearOf(WallSeconds wall) {
  return Date::FromSeconds(wall).Fields().year;
}

std::string TooManyInAYear(std::size_t most) {
  return "gives more than " + std::to_string(most) +
         " occurrences in a year; the rest of that year's are left out";
}

bool SameClock(const IcsTime& a, const IcsTime& b) {
  return a.zone == b.zone;
}

/// What the clock of a series shows at one of its added dates.
WallSeconds OnClockOf(const IcsTime& series, const IcsTime& added) {
  if (series.isDate) return DayOf(added.wall) * SecondsPerDay;
  if (SameClock(series, added)) return added.wall;
  return series.zone->FromLocal(added.Local()).value_or(added.wall);
}

}  // namespace

std::size_t YearCounts::Room(int year) const {
  const auto found = counts_.find(year);
  return found == counts_.end() ? most_ : most_ - found->second;
}

/// What EXDATE, EXRULE and changed occurrences take away.
struct IcsItemBuilder::RemovedDates {
  std::unordered_set<WallSeconds> days;
  std::unordered_set<WallSeconds> seconds;

  void Add(const OccurrenceKey& key) { (key.isDay ? days : seconds).insert(key.value); }
  bool Has(const IcsTime& start, WallSeconds local) const {
    return (!days.empty() && days.contains(DayOf(start.wall))) || seconds.contains(local);
  }
};

/// A recurring event and all that says where its occurrences lie.
struct IcsItemBuilder::Series {
  const IcsEvent& master;
  IcsSegments segments;
  /// Of the master and of each change that is not cancelled.
  std::map<const IcsEvent*, Span> firsts;
  RemovedDates removed;
};

OccurrenceKey KeyOf(const IcsTime& named, const IcsEvent& master) {
  if (named.isDate || master.start.isDate) return {true, DayOf(named.wall)};
  return {false, named.Local()};
}

IcsItemBuilder::Span IcsItemBuilder::FirstSpan(const IcsEvent& event) {
  Span span{event.start.Local(), 0};
  span.end = span.start;
  if (event.end) span.end = event.end->Local();
  if (event.duration) span.end = After(event.start, *event.duration);
  const bool endsAtStart = span.end == span.start && event.start.isDate;
  if (span.end < span.start || endsAtStart) {
    diagnostics_.Warn(
        event.Line(),
        event.Name() + (endsAtStart ? " ends where it starts" : " ends before it starts") +
            (event.start.isDate ? "; it is shown as one day" : "; it is shown without length"));
    span.end = event.start.isDate ? span.start + SecondsPerDay : span.start;
  }
  CutAtLastYear(span, event);
  return span;
}

void IcsItemBuilder::CutAtLastYear(Span& span, const IcsEvent& event) {
  if (span.end <= LastWall) return;
  span.end = LastWall;
  if (lastCut_ == &event) return;
  lastCut_ = &event;
  diagnostics_.Warn(event.Line(), event.Name() + " ends after the year 9999; it is cut there");
}

CalendarItem IcsItemBuilder::Bare(const IcsEvent& main, const std::vector<const IcsEvent*>& changed,
                                  std::string entryId) {
  const Span span = FirstSpan(main);
  CalendarItem item;
  item.entryId = std::move(entryId);
  if (!main.messageClass.empty()) item.messageClass = main.messageClass;
  item.fields = main.fields;
  item.start = ToDate(span.start);
  item.end = ToDate(span.end);
  item.recurring = main.IsRecurring() && !main.recurrenceId;
  item.contentMark = ContentMarkOf(main, changed);
  WallSeconds modified = 0;
  const auto take = [&](const IcsEvent& event) {
    if (event.modified && IsInCalendar(event.modified->Local())) {
      modified = std::max(modified, event.modified->Local());
    }
  };
  take(main);
  for (const IcsEvent* event : changed) take(*event);
  item.lastModified = ToDate(modified);
  return item;
}

CalendarItem IcsItemBuilder::Item(const IcsEvent& main, const std::vector<const IcsEvent*>& changed,
                                  std::string entryId) {
  CalendarItem item = Bare(main, changed, std::move(entryId));
  if (item.recurring) Expand(item, main, changed);
  return item;
}

void IcsItemBuilder::Report(const IcsEvent& master, const IcsRuleText& rule,
                            const std::vector<std::string>& remarks) {
  for (const std::string& remark : remarks) {
    diagnostics_.Warn(rule.line,
                      "the rule " + Quoted(rule.text) + " of " + master.Name() + " " + remark);
  }
}

std::vector<WallSeconds> IcsItemBuilder::RuleStartsOf(
    const IcsEvent& master, const std::vector<IcsSegments::Stretch>& reach) {
  std::vector<WallSeconds> starts;
  for (const IcsRuleText& rule : master.rules) {
    IcsRule expansion(rule.text, master.start);
    std::vector<std::string> remarks = expansion.Remarks();
    bool tooMany = false;
    for (const auto& [from, to] : reach) {
      // A year on end, so that one that is too full leaves the others whole.
      for (WallSeconds begin = std::max(from, master.start.wall); begin <= to;) {
        const WallSeconds next = Date::FromYmd(YearOf(begin) + 1, 1, 1).Seconds();
        // The first start takes a place, too.
        const std::size_t ofItem = limits_.itemOccurrences - (begin == master.start.wall ? 1 : 0);
        const std::size_t room = occurrences_.Room(YearOf(begin));
        const bool isFull = room < ofItem;
        const RuleStarts year =
            expansion.StartsIn(begin, std::min(next - 1, to), isFull ? room : ofItem);
        starts.insert(starts.end(), year.starts.begin(), year.starts.end());
        if (!year.areAll) (isFull ? lacksRoom_ : tooMany) = true;
        begin = next;
      }
    }
    if (tooMany) remarks.push_back(TooManyInAYear(limits_.itemOccurrences));
    Report(master, rule, remarks);
  }
  return starts;
}

void IcsItemBuilder::TakeAwayByRules(const IcsEvent& master, std::vector<WallSeconds> starts,
                                     RemovedDates& removed) {
  if (master.exceptionRules.empty()) return;
  removed.Add(KeyOf(master.start, master));
  for (const IcsAddedDate& added : master.addedDates) {
    starts.push_back(OnClockOf(master.start, added.start));
  }
  std::sort(starts.begin(), starts.end());
  starts.erase(std::unique(starts.begin(), starts.end()), starts.end());
  for (const IcsRuleText& rule : master.exceptionRules) {
    IcsRule expansion(rule.text, master.start);
    Report(master, rule, expansion.Remarks());
    for (const WallSeconds wall : starts) {
      if (!expansion.StartsAt(wall)) continue;
      removed.Add(KeyOf({master.start.isDate, wall, master.start.zone}, master));
    }
  }
}

/// @param own          of an added date of the series itself
/// @param firstLength  of the event's own occurrence, in local seconds
IcsItemBuilder::Span IcsItemBuilder::SpanOf(const IcsTime& start, const IcsEvent& event,
                                            const IcsAddedDate* own, WallSeconds firstLength) {
  Span span{start.Local(), 0};
  if (own && own->end) {
    span.end = own->end->Local();
  } else if (own && own->duration) {
    span.end = After(start, *own->duration);
  } else if (event.duration) {
    span.end = After(start, *event.duration);
  } else if (event.end && SameClock(*event.end, event.start)) {
    // The clock shows the same times on the days around a change of the clock, too.
    span.end = After(start, event.end->wall - event.start.wall);
  } else {
    span.end = span.start + firstLength;
  }
  span.end = std::max(span.end, span.start);
  if (start.isDate && span.end == span.start) span.end += SecondsPerDay;
  return span;
}

/// None where the series has been moved or cancelled, and outside the window.
std::optional<IcsItemBuilder::Place> IcsItemBuilder::PlaceAt(const IcsTime& start,
                                                             const IcsAddedDate* own,
                                                             const Series& series) {
  const IcsEvent& event = series.segments.EventAt(start);
  const auto moved = series.segments.Moved(start);
  if (event.cancelled || !moved) return std::nullopt;
  const Span& first = series.firsts.at(&event);
  const Span span =
      SpanOf(*moved, event, &event == &series.master ? own : nullptr, first.end - first.start);
  if (!Touches(span) || !IsInCalendar(span.start)) return std::nullopt;
  return Place{span, &event};
}

std::vector<IcsItemBuilder::Place> IcsItemBuilder::Places(
    const Series& series, const std::vector<WallSeconds>& ruleStarts) {
  const IcsEvent& master = series.master;
  std::vector<Place> places;
  std::unordered_set<WallSeconds> starts;
  YearCounts ofItem(limits_.itemOccurrences);
  bool tooMany = false;
  const auto add = [&](const IcsTime& start, const IcsAddedDate* own) {
    const WallSeconds local = start.Local();
    if (series.removed.Has(start, local) || starts.contains(local)) return;
    auto place = PlaceAt(start, own, series);
    if (!place) return;
    const int year = YearOf(place->span.start);
    if (ofItem.Room(year) == 0 || occurrences_.Room(year) == 0) {
      (ofItem.Room(year) == 0 ? tooMany : lacksRoom_) = true;
      return;
    }
    ofItem.Add(year);
    occurrences_.Add(year);
    starts.insert(local);
    CutAtLastYear(place->span, *place->event);
    places.push_back(*place);
  };

  add(master.start, nullptr);
  for (const WallSeconds wall : ruleStarts) {
    add({master.start.isDate, wall, master.start.zone}, nullptr);
  }
  for (IcsAddedDate date : master.addedDates) {
    if (master.start.isDate && !date.start.isDate) {
      date.start = {true, DayOf(date.start.wall) * SecondsPerDay, master.start.zone};
    }
    add(date.start, &date);
  }
  if (tooMany) {
    diagnostics_.Warn(master.Line(), master.Name() + " " + TooManyInAYear(limits_.itemOccurrences));
  }
  std::stable_sort(places.begin(), places.end(),
                   [](const Place& a, const Place& b) { return a.span.start < b.span.start; });
  return places;
}

void IcsItemBuilder::Expand(CalendarItem& item, const IcsEvent& master,
                            const std::vector<const IcsEvent*>& changed) {
  Series series{master, {master, changed}, {}, {}};
  series.firsts.emplace(&master, Span{item.start.Seconds(), item.end.Seconds()});
  for (const IcsEvent* event : changed) {
    if (!event->cancelled) series.firsts.emplace(event, FirstSpan(*event));
  }
  WallSeconds longest = 0;
  for (const auto& [event, first] : series.firsts) {
    longest = std::max(longest, first.end - first.start);
  }
  for (const IcsTime& date : master.exceptionDates) series.removed.Add(KeyOf(date, master));
  for (const IcsEvent* event : changed) series.removed.Add(KeyOf(*event->recurrenceId, master));
  const auto ruleStarts = RuleStartsOf(master, series.segments.Reach(from_, to_, longest));
  TakeAwayByRules(master, ruleStarts, series.removed);

  std::vector<Place> places = Places(series, ruleStarts);
  if (std::exchange(lacksRoom_, false)) {
    diagnostics_.Warn(master.Line(),
                      "occurrences of " + master.Name() +
                          " are left out, since the recurring events of the file have more than " +
                          std::to_string(limits_.occurrences) + " in a year");
  }
  for (const IcsEvent* event : changed) {
    if (event->cancelled || !Touches(series.firsts.at(event))) continue;
    places.push_back({series.firsts.at(event), event});
  }
  AddOccurrences(item, master, places);
}

/// @param places  whose events other than the master give the item its changed texts
void IcsItemBuilder::AddOccurrences(CalendarItem& item, const IcsEvent& master,
                                    const std::vector<Place>& places) {
  std::map<const IcsEvent*, std::int32_t> fields{{&master, -1}};
  item.occurrences.reserve(places.size());
  for (const Place& place : places) {
    const auto [known, isNew] =
        fields.try_emplace(place.event, static_cast<std::int32_t>(item.changed.size()));
    if (isNew) item.changed.push_back(place.event->fields);
    item.occurrences.push_back({ToDate(place.span.start), ToDate(place.span.end), known->second});
  }
  std::stable_sort(
      item.occurrences.begin(), item.occurrences.end(),
      [](const CalendarOccurrence& a, const CalendarOccurrence& b) { return a.start < b.start; });
}

namespace {

/// Stretches of the master's clock around the moments that keys name, ascending.
std::vector<IcsSegments::Stretch> StretchesAround(const std::set<OccurrenceKey>& keys,
                                                  const IcsEvent& master) {
  // A local time names two moments where a clock is set back.
  constexpr WallSeconds Slack = 3600;
  std::vector<IcsSegments::Stretch> stretches;
  for (const OccurrenceKey& key : keys) {
    if (key.isDay) {
      stretches.emplace_back(key.value * SecondsPerDay, (key.value + 1) * SecondsPerDay - 1);
    } else {
      const WallSeconds wall =
          master.start.zone->FromUtc(IcsZone(IcsZone::Floating{}).ToUtc(key.value));
      stretches.emplace_back(wall - Slack, wall + Slack);
    }
  }
  std::sort(stretches.begin(), stretches.end());
  return stretches;
}

}  // namespace

std::set<OccurrenceKey> OccurringAt(const std::set<OccurrenceKey>& keys, const IcsEvent& master) {
  std::set<OccurrenceKey> found;
  if (keys.empty()) return found;
  const auto take = [&](const IcsTime& start) {
    for (const OccurrenceKey& key :
         {OccurrenceKey{true, DayOf(start.wall)}, KeyOf(start, master)}) {
      if (keys.contains(key)) found.insert(key);
    }
  };
  take(master.start);
  for (const IcsAddedDate& added : master.addedDates) take(added.start);

  const auto stretches = StretchesAround(keys, master);
  // Bounds the work of many changes far apart in rules of many starts.
  std::size_t left = 1'000'000;
  for (const IcsRuleText& rule : master.rules) {
    IcsRule expansion(rule.text, master.start);
    WallSeconds next = master.start.wall;
    for (auto [from, to] : stretches) {
      from = std::max(from, next);
      if (from > to || left == 0) continue;
      const RuleStarts result = expansion.StartsIn(from, to, left);
      left -= std::min(left, result.starts.size() + 1);
      next = to + 1;
      for (const WallSeconds wall : result.starts) {
        take({master.start.isDate, wall, master.start.zone});
      }
    }
  }
  return found;
}

}  // namespace velkor
