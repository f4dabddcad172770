// calendar/ics/read/IcsAppointments.cpp: revisions, changed occurrences and identifiers.
#include "calendar/ics/read/IcsAppointments.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include "calendar/ics/file/ShortHash.h"
#include "calendar/ics/read/IcsOccurrences.h"
#include "values/Text.h"

namespace velkor {
namespace {

/// Parts after their lengths, so that no two lists of parts look the same.
class Parts {
 public:
  Parts& Add(std::string_view part) {
    bytes_.append(std::to_string(part.size())).append(":").append(part);
    return *this;
  }
  Parts& Add(std::int64_t number) { return Add(std::to_string(number)); }
  Parts& Add(const IcsTime& time) { return Add(time.isDate).Add(time.Local()); }
  Parts& Add(const std::optional<IcsTime>& time) { return time ? Add(*time) : Add("none"); }
  Parts& Add(const std::optional<IcsDuration>& duration) {
    return duration ? Add(duration->days).Add(duration->seconds) : Add("none");
  }
  std::string Hash() const { return ShortHash(bytes_); }

 private:
  std::string bytes_;
};

bool IsEntryId(std::string_view text) {
  constexpr std::size_t Digits = 32;
  return text.size() == Digits && std::all_of(text.begin(), text.end(), [](char c) {
           return IsDigit(c) || (c >= 'a' && c <= 'f');
         });
}

void AddContent(Parts& parts, const IcsEvent& event) {
  const AppointmentFields& fields = event.fields;
  parts.Add(fields.subject).Add(static_cast<std::int64_t>(fields.categories.size()));
  for (const std::string& name : fields.categories) parts.Add(name);
  parts.Add(fields.location).Add(fields.body).Add(fields.allDay).Add(event.messageClass);
  parts.Add(event.start).Add(event.end).Add(event.duration).Add(event.recurrenceId);
  parts.Add(event.thisAndFuture).Add(event.cancelled);
  for (const IcsRuleText& rule : event.rules) parts.Add("rule").Add(rule.text);
  for (const IcsRuleText& rule : event.exceptionRules) parts.Add("not").Add(rule.text);
  for (const IcsTime& date : event.exceptionDates) parts.Add("not").Add(date);
  for (const IcsAddedDate& date : event.addedDates) {
    parts.Add("date").Add(date.start).Add(date.end).Add(date.duration);
  }
}

/// All events with one UID.
struct UidGroup {
  /// Events without RECURRENCE-ID, by place in the file; those that count.
  std::vector<std::size_t> masters;
  std::vector<std::size_t> changed;
  /// Who is known by the UID alone: the first series that may have changed occurrences; of an event
  /// that does not recur, the change that takes its place.
  std::optional<std::size_t> owner;
  /// The changed occurrences of each series.
  std::map<std::size_t, std::vector<std::size_t>> changedOf;
  /// Some or all masters are cancelled.
  bool hasCancelled = false;
  bool isCancelled = false;
};

class Grouping {
 public:
  Grouping(std::string_view bytes, const std::vector<IcsEvent>& events, Diagnostics& diagnostics)
      : bytes_(bytes), events_(events), diagnostics_(diagnostics) {}

  std::vector<IcsAppointment> Appointments() {
    GroupByUid();
    for (auto& [uid, group] : groups_) {
      DropOlderRevisions(group);
      ChooseOwner(group);
    }
    std::vector<std::size_t> shown;
    for (std::size_t i = 0; i < events_.size(); ++i) {
      const IcsEvent& event = events_[i];
      if (left_[i]) continue;
      if (!event.cancelled) {
        shown.push_back(i);
      } else if (!event.recurrenceId) {
        diagnostics_.Note(event.Line(), event.Name() + " is cancelled; it is not shown");
      }
    }
    ClaimOwnIds(shown);
    std::vector<IcsAppointment> result;
    std::unordered_map<std::string_view, std::size_t> shownOfUid;
    for (const std::size_t index : shown) {
      placeOf_[index] = result.size();
      result.push_back({EntryIdOf(index), index, ChangedOf(index), {}, false});
      if (!events_[index].uid.empty()) ++shownOfUid[events_[index].uid];
    }
    for (IcsAppointment& one : result) {
      const std::string& uid = events_[one.main].uid;
      one.sharesUid = !uid.empty() && (shownOfUid[uid] > 1 || groups_.at(uid).hasCancelled);
    }
    for (const auto& [hidden, by] : hiddenBy_) {
      if (const auto place = placeOf_.find(ShowerOf(by)); place != placeOf_.end()) {
        result[place->second].hidden.push_back(hidden);
      }
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
      (event.recurrenceId ? group.changed : group.masters).push_back(i);
    }
  }

  /// Of events with one UID, those are older revisions that have a lower SEQUENCE than the newest
  /// and its subject or its start; anything else shares the UID by mistake and is shown. A
  /// cancelled one stands for those of its own SEQUENCE, too.
  void DropOlderRevisions(UidGroup& group) {
    const auto revision = [&](std::size_t index) {
      return std::pair(events_[index].sequence.value_or(-1), events_[index].cancelled);
    };
    const auto found =
        std::max_element(group.masters.begin(), group.masters.end(),
                         [&](std::size_t a, std::size_t b) { return revision(a) < revision(b); });
    if (found == group.masters.end()) return;
    const std::size_t newest = *found;
    const IcsEvent& kept = events_[newest];
    std::erase_if(group.masters, [&](std::size_t index) {
      const IcsEvent& event = events_[index];
      const bool isBefore = kept.cancelled ? revision(index) < revision(newest)
                                           : event.sequence && event.sequence < kept.sequence;
      const bool older = isBefore && (event.fields.subject == kept.fields.subject ||
                                      event.start.Local() == kept.start.Local());
      if (!older) return false;
      Hide(index, newest);
      diagnostics_.Note(event.Line(), event.Name() + " is an older revision of the one in line " +
                                          std::to_string(kept.Line()) + "; it is not shown");
      return true;
    });
    const auto isCancelled = [&](std::size_t index) { return events_[index].cancelled; };
    group.isCancelled = std::all_of(group.masters.begin(), group.masters.end(), isCancelled);
    group.hasCancelled = std::erase_if(group.masters, isCancelled) > 0;
  }

  /// Gives changed occurrences to their series; a change of an event that does not recur takes its
  /// place, the last one of several. Without either they stand by themselves, unless all that they
  /// could belong to is cancelled.
  void ChooseOwner(UidGroup& group) {
    if (group.isCancelled) {
      for (const std::size_t index : group.changed) left_[index] = true;
    }
    if (group.changed.empty() || group.masters.empty()) return;
    std::vector<std::size_t> series;
    std::copy_if(group.masters.begin(), group.masters.end(), std::back_inserter(series),
                 [&](std::size_t index) { return events_[index].IsRecurring(); });
    if (!series.empty()) {
      group.owner = series.front();
      ShareChanges(group, series);
      for (auto& [owner, changed] : group.changedOf) KeepOneForEachOccurrence(owner, changed);
      for (const std::size_t index : group.changed) left_[index] = true;
      return;
    }
    const std::size_t first = group.masters.front();
    const OccurrenceKey key = KeyOf(events_[first].start, events_[first]);
    for (const std::size_t index : group.changed) {
      if (KeyOf(*events_[index].recurrenceId, events_[first]) != key) continue;
      Hide(group.owner.value_or(first), index);
      group.owner = index;
    }
  }

  /// Of series with one UID, a change belongs to the first one that has an occurrence at the moment
  /// it names; to the first one of all when none has.
  void ShareChanges(UidGroup& group, const std::vector<std::size_t>& series) {
    // More than a calendar holds by mistake; the others have no changes.
    constexpr std::size_t MostSeries = 20;
    std::vector<std::size_t> left = group.changed;
    for (std::size_t i = 0; series.size() > 1 && i < std::min(series.size(), MostSeries); ++i) {
      const IcsEvent& master = events_[series[i]];
      const auto keyOf = [&](std::size_t index) {
        return KeyOf(*events_[index].recurrenceId, master);
      };
      std::set<OccurrenceKey> keys;
      for (const std::size_t index : left) keys.insert(keyOf(index));
      const std::set<OccurrenceKey> found = OccurringAt(keys, master);
      std::erase_if(left, [&](std::size_t index) {
        const bool isOfThis = found.contains(keyOf(index));
        if (isOfThis) group.changedOf[series[i]].push_back(index);
        return isOfThis;
      });
    }
    auto& first = group.changedOf[series.front()];
    first.insert(first.end(), left.begin(), left.end());
    std::sort(first.begin(), first.end());
  }

  void KeepOneForEachOccurrence(std::size_t owner, std::vector<std::size_t>& changed) {
    std::map<OccurrenceKey, std::size_t> newest;
    for (const std::size_t index : changed) {
      const OccurrenceKey key = KeyOf(*events_[index].recurrenceId, events_[owner]);
      const auto [known, isNew] = newest.try_emplace(key, index);
      if (isNew) continue;
      std::size_t older = index;
      if (events_[index].sequence.value_or(0) >= events_[known->second].sequence.value_or(0)) {
        std::swap(older, known->second);
      }
      Hide(older, owner);
      diagnostics_.Note(events_[older].Line(), events_[older].Name() +
                                                   " is an older change of an occurrence; it is "
                                                   "not shown");
    }
    std::erase_if(changed, [&](std::size_t index) { return left_[index]; });
  }

  std::vector<std::size_t> ChangedOf(std::size_t index) const {
    const auto group = groups_.find(events_[index].uid);
    if (group == groups_.end()) return {};
    const auto changed = group->second.changedOf.find(index);
    return changed == group->second.changedOf.end() ? std::vector<std::size_t>() : changed->second;
  }

  void Hide(std::size_t index, std::size_t by) {
    left_[index] = true;
    hiddenBy_[index] = by;
  }

  std::size_t ShowerOf(std::size_t index) const {
    // An event is hidden by a later decision only, so this ends.
    for (auto by = hiddenBy_.find(index); by != hiddenBy_.end(); by = hiddenBy_.find(index)) {
      index = by->second;
    }
    return index;
  }

  /// Of events that name the same identifier, as copies do, the first one has it.
  void ClaimOwnIds(const std::vector<std::size_t>& shown) {
    for (const std::size_t index : shown) {
      const std::string& id = events_[index].entryId;
      if (IsEntryId(id) && taken_.insert(id).second) ownId_.insert(index);
    }
  }

  /// The owner in a group, or else its first event, is known by the UID alone;
  /// every other event by its text and by how many of the same text came before.
  std::string EntryIdOf(std::size_t index) {
    const IcsEvent& event = events_[index];
    if (ownId_.contains(index)) return event.entryId;
    const auto group = groups_.find(event.uid);
    if (group != groups_.end()) {
      const UidGroup& same = group->second;
      const bool first = !same.owner && !event.recurrenceId && index == same.masters.front();
      if (index == same.owner || first) {
        if (std::string id = EntryIdOfUid(event.uid); taken_.insert(id).second) return id;
      }
    }
    const IcsComponent& component = *event.component;
    const std::string text =
        Parts()
            .Add("text")
            .Add(event.uid)
            .Add(bytes_.substr(component.begin, component.end - component.begin))
            .Hash();
    while (true) {
      const std::size_t before = sameText_[text]++;
      std::string id =
          before == 0 ? text : Parts().Add("copy").Add(text).Add(std::to_string(before)).Hash();
      if (taken_.insert(id).second) return id;
    }
  }

  std::string_view bytes_;
  const std::vector<IcsEvent>& events_;
  Diagnostics& diagnostics_;
  std::unordered_map<std::string, UidGroup> groups_;
  /// Events that are shown by another one, or not at all.
  std::vector<bool> left_;
  std::map<std::size_t, std::size_t> hiddenBy_;
  std::unordered_map<std::size_t, std::size_t> placeOf_;
  std::unordered_set<std::size_t> ownId_;
  std::unordered_set<std::string> taken_;
  std::unordered_map<std::string, std::size_t> sameText_;
};

}  // namespace

std::vector<IcsAppointment> GroupIcsEvents(std::string_view bytes,
                                           const std::vector<IcsEvent>& events,
                                           Diagnostics& diagnostics) {
  return Grouping(bytes, events, diagnostics).Appointments();
}

std::string EntryIdOfUid(std::string_view uid) {
  return Parts().Add("uid").Add(uid).Hash();
}

std::string ContentMarkOf(const IcsEvent& main, const std::vector<const IcsEvent*>& changed) {
  Parts parts;
  AddContent(parts, main);
  for (const IcsEvent* event : changed) AddContent(parts, *event);
  return parts.Hash();
}

}  // namespace velkor
