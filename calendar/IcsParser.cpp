// calendar/IcsParser.cpp: which events of a file belong together, and their identifiers.
#include "calendar/IcsParser.h"

#include <libical/ical.h>

#include <algorithm>
#include <map>
#include <unordered_map>

#include "calendar/IcsEvent.h"
#include "calendar/IcsLines.h"
#include "calendar/IcsOccurrences.h"
#include "calendar/IcsScanner.h"
#include "calendar/IcsZones.h"
#include "calendar/ShortHash.h"
#include "support/values/Error.h"
#include "support/values/Text.h"

namespace velkor {
namespace {

std::string HashOf(std::initializer_list<std::string_view> parts) {
  std::string bytes;
  for (const std::string_view part : parts) {
    bytes.append(std::to_string(part.size())).append(":").append(part);
  }
  return ShortHash(bytes);
}

std::string NameOf(const std::string& file, const IcsScan& scan) {
  if (const std::string name = ReadText(scan.calendarName, scan.encoding, " "); !name.empty()) {
    return name;
  }
  std::string name = file.substr(file.find_last_of("/\\") + 1);
  constexpr std::string_view Extension = ".ics";
  if (name.size() > Extension.size() &&
      SameName(std::string_view(name).substr(name.size() - Extension.size()), Extension)) {
    name.resize(name.size() - Extension.size());
  }
  return name;
}

/// All events with one UID.
struct UidGroup {
  /// Events without RECURRENCE-ID, by place in the file; those that count.
  std::vector<std::size_t> masters;
  std::vector<std::size_t> changed;
  /// The master that the changed occurrences belong to; of an event that does not recur, the
  /// change that takes its place.
  std::optional<std::size_t> owner;
};

class CalendarBuilder {
 public:
  CalendarBuilder(std::string_view bytes, std::vector<IcsEvent> events, IcsItemBuilder& items,
                  Diagnostics& diagnostics)
      : bytes_(bytes), events_(std::move(events)), items_(items), diagnostics_(diagnostics) {}

  std::vector<CalendarItem> Build() {
    GroupByUid();
    for (auto& [uid, group] : groups_) {
      DropOlderRevisions(group);
      ChooseOwner(group);
    }
    std::vector<CalendarItem> result;
    for (std::size_t i = 0; i < events_.size(); ++i) {
      const IcsEvent& event = events_[i];
      if (event.cancelled && !event.recurrenceId) {
        diagnostics_.Note(event.Line(), event.Name() + " is cancelled; it is not shown");
        continue;
      }
      if (left_[i]) continue;
      if (event.cancelled) continue;
      std::string entryId = EntryIdOf(i);
      result.push_back(event.IsRecurring() && !event.recurrenceId
                           ? items_.Recurring(event, ChangedOf(i), std::move(entryId))
                           : items_.Single(event, std::move(entryId)));
    }
    return result;
  }

 private:
  void GroupByUid() {
    left_.assign(events_.size(), false);
    for (std::size_t i = 0; i < events_.size(); ++i) {
      const IcsEvent& event = events_[i];
      if (event.uid.empty()) continue;
      UidGroup& group = groups_[event.uid];
      if (event.recurrenceId) {
        group.changed.push_back(i);
      } else if (!event.cancelled) {
        group.masters.push_back(i);
      }
    }
  }

  /// Of events with one UID, those are older revisions that have a lower SEQUENCE than the newest
  /// and its subject or its start; anything else shares the UID by mistake and is shown.
  void DropOlderRevisions(UidGroup& group) {
    const auto newest = std::max_element(
        group.masters.begin(), group.masters.end(), [&](std::size_t a, std::size_t b) {
          return events_[a].sequence.value_or(-1) < events_[b].sequence.value_or(-1);
        });
    if (newest == group.masters.end() || !events_[*newest].sequence) return;
    const IcsEvent& kept = events_[*newest];
    std::erase_if(group.masters, [&](std::size_t index) {
      const IcsEvent& event = events_[index];
      const bool older = event.sequence && *event.sequence < *kept.sequence &&
                         (event.fields.subject == kept.fields.subject ||
                          event.start.Local() == kept.start.Local());
      if (!older) return false;
      left_[index] = true;
      diagnostics_.Note(event.Line(), event.Name() + " is an older revision of the one in line " +
                                          std::to_string(kept.Line()) + "; it is not shown");
      return true;
    });
  }

  /// Gives changed occurrences to the first recurring master; a change of an event that does not
  /// recur takes its place, the last one of several. Without either they stand by themselves.
  void ChooseOwner(UidGroup& group) {
    if (group.changed.empty() || group.masters.empty()) return;
    const auto recurring =
        std::find_if(group.masters.begin(), group.masters.end(),
                     [&](std::size_t index) { return events_[index].IsRecurring(); });
    if (recurring != group.masters.end()) {
      group.owner = *recurring;
      KeepOneForEachOccurrence(group);
      for (const std::size_t index : group.changed) left_[index] = true;
      return;
    }
    const std::size_t first = group.masters.front();
    const OccurrenceKey key = KeyOf(events_[first].start, events_[first]);
    for (const std::size_t index : group.changed) {
      if (KeyOf(*events_[index].recurrenceId, events_[first]) != key) continue;
      left_[group.owner.value_or(first)] = true;
      group.owner = index;
    }
  }

  void KeepOneForEachOccurrence(UidGroup& group) {
    std::map<OccurrenceKey, std::size_t> newest;
    for (const std::size_t index : group.changed) {
      const OccurrenceKey key = KeyOf(*events_[index].recurrenceId, events_[*group.owner]);
      const auto [known, isNew] = newest.try_emplace(key, index);
      if (isNew) continue;
      std::size_t older = index;
      if (events_[index].sequence.value_or(0) >= events_[known->second].sequence.value_or(0)) {
        std::swap(older, known->second);
      }
      left_[older] = true;
      diagnostics_.Note(events_[older].Line(), events_[older].Name() +
                                                   " is an older change of an occurrence; it is "
                                                   "not shown");
    }
    std::erase_if(group.changed, [&](std::size_t index) { return left_[index]; });
  }

  std::vector<const IcsEvent*> ChangedOf(std::size_t index) const {
    std::vector<const IcsEvent*> changed;
    const auto group = groups_.find(events_[index].uid);
    if (group != groups_.end() && group->second.owner == index) {
      for (const std::size_t one : group->second.changed) changed.push_back(&events_[one]);
    }
    return changed;
  }

  /// The owner in a group, or else its first event, is known by the UID alone;
  /// every other event by its text and by how many of the same text came before.
  std::string EntryIdOf(std::size_t index) {
    const IcsEvent& event = events_[index];
    const auto group = groups_.find(event.uid);
    if (group != groups_.end()) {
      const UidGroup& same = group->second;
      const bool first = !same.owner && !event.recurrenceId && index == same.masters.front();
      if (index == same.owner || first) return HashOf({"uid", event.uid});
    }
    const IcsComponent& component = *event.component;
    const std::string text = HashOf(
        {"text", event.uid, bytes_.substr(component.begin, component.end - component.begin)});
    const std::size_t before = sameText_[text]++;
    return before == 0 ? text : HashOf({"copy", text, std::to_string(before)});
  }

  std::string_view bytes_;
  std::vector<IcsEvent> events_;
  IcsItemBuilder& items_;
  Diagnostics& diagnostics_;
  std::unordered_map<std::string, UidGroup> groups_;
  /// Events that are shown by another one, or not at all.
  std::vector<bool> left_;
  std::unordered_map<std::string, std::size_t> sameText_;
};

}  // namespace

ParsedCalendar ParseIcs(std::string_view bytes, const std::string& name, const DateWindow& window,
                        const IcsLimits& limits) {
  const auto fail = [&](const std::string& what) {
    throw Error(errors::CalendarFailed, "The calendar file " + name + " " + what, "Calendar");
  };
  if (bytes.size() > limits.fileSize) {
    fail("is larger than " + std::to_string(limits.fileSize >> 20) + " MiB.");
  }
  icalerror_set_errors_are_fatal(0);
  Diagnostics diagnostics(name, limits.diagnostics);
  const IcsScan scan = ScanIcs(bytes, limits, diagnostics);
  const auto isEvent = [](const IcsComponent& component) { return component.name == "VEVENT"; };
  if (scan.calendars == 0 &&
      std::none_of(scan.components.begin(), scan.components.end(), isEvent)) {
    fail("holds no calendar.");
  }

  IcsZones zones(bytes, scan, limits, diagnostics);
  const IcsFile file{bytes, scan.encoding, zones, limits, diagnostics};
  std::vector<IcsEvent> events;
  for (const IcsComponent& component : scan.components) {
    if (!isEvent(component)) continue;
    if (auto event = ReadIcsEvent(component, file)) events.push_back(std::move(*event));
  }

  ParsedCalendar calendar;
  calendar.name = NameOf(name, scan);
  IcsItemBuilder items(window, limits, diagnostics);
  calendar.items = CalendarBuilder(bytes, std::move(events), items, diagnostics).Build();
  calendar.diagnostics = diagnostics.Take();
  return calendar;
}

}  // namespace velkor
