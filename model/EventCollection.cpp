// model/EventCollection.cpp: the events of the displayed span in the order of loading.
#include "model/EventCollection.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <map>
#include <utility>

#include "platform/LocaleApi.h"

namespace velkor {
namespace {

std::uint32_t HashOf(std::string_view eventId) {
  return static_cast<std::uint32_t>(std::hash<std::string_view>()(eventId));
}

}  // namespace

EventCollection::EventCollection(std::vector<CalEvent> events) : events_(std::move(events)) {
  DropRepeated();
}

void EventCollection::DropRepeated() {
  // Seconds and hash are worked out once for each event, in the order of memory. A cache file is in
  // order of start already, and a sort of what is in order is cheap.
  std::vector<Key> keys;
  std::vector<std::uint32_t> leftOut;
  keys.reserve(events_.size());
  for (std::uint32_t i = 0; i < events_.size(); ++i) {
    if (events_[i].EventID.empty()) {
      leftOut.push_back(i);
    } else {
      keys.push_back({events_[i].StartDate.Seconds(), HashOf(events_[i].EventID), i});
    }
  }
  const auto byStart = [](const Key& a, const Key& b) {
    return a.start != b.start ? a.start < b.start : a.index < b.index;
  };
  if (!std::is_sorted(keys.begin(), keys.end(), byStart)) {
    std::sort(keys.begin(), keys.end(), byStart);
  }
  for (auto group = keys.begin(); group != keys.end();) {
    const auto groupEnd =
        std::find_if(group, keys.end(), [&](const Key& key) { return key.start != group->start; });
    if (groupEnd - group > 1) FindRepeated({group, groupEnd}, leftOut);
    group = groupEnd;
  }
  if (!leftOut.empty()) {
    std::sort(leftOut.begin(), leftOut.end());
    std::uint32_t index = 0;
    std::erase_if(events_, [&](const CalEvent&) {
      return std::binary_search(leftOut.begin(), leftOut.end(), index++);
    });
  }
}

void EventCollection::FindRepeated(std::span<Key> group,
                                   std::vector<std::uint32_t>& repeated) const {
  const auto idOf = [&](const Key& key) -> const std::string& {
    return events_[key.index].EventID;
  };
  std::sort(group.begin(), group.end(), [&](const Key& a, const Key& b) {
    if (a.idHash != b.idHash) return a.idHash < b.idHash;
    const int order = idOf(a).compare(idOf(b));
    return order != 0 ? order < 0 : a.index < b.index;
  });
  for (std::size_t i = 1; i < group.size(); ++i) {
    const bool same =
        group[i].idHash == group[i - 1].idHash && idOf(group[i]) == idOf(group[i - 1]);
    if (same) repeated.push_back(group[i].index);
  }
}

void EventCollection::Insert(std::vector<CalEvent> arrivals,
                             const std::unordered_set<std::string>& replaced) {
  std::map<std::pair<std::string, std::int64_t>, std::size_t> placeOf;
  for (std::size_t i = 0; i < arrivals.size(); ++i) {
    placeOf.try_emplace({arrivals[i].EventID, arrivals[i].StartDate.Seconds()}, i);
  }
  std::vector<CalEvent> all;
  all.reserve(events_.size() + arrivals.size());
  for (CalEvent& event : events_) {
    if (!replaced.contains(event.EventID)) {
      all.push_back(std::move(event));
      continue;
    }
    const auto again = placeOf.find({event.EventID, event.StartDate.Seconds()});
    if (again == placeOf.end()) continue;
    all.push_back(arrivals[again->second]);
  }
  std::move(arrivals.begin(), arrivals.end(), std::back_inserter(all));
  std::stable_sort(all.begin(), all.end(),
                   [](const CalEvent& a, const CalEvent& b) { return a.StartDate < b.StartDate; });
  *this = EventCollection(std::move(all));
}

void EventCollection::RemoveAppointment(std::string_view eventId) {
  std::erase_if(events_, [&](const CalEvent& event) { return event.EventID == eventId; });
}

void EventCollection::Remove(std::string_view key, LocaleApi& locale) {
  const std::optional<std::size_t> index = Find(key, locale);
  if (index) events_.erase(events_.begin() + static_cast<std::ptrdiff_t>(*index));
}

std::string EventCollection::KeyOf(const CalEvent& event, LocaleApi& locale) {
  return locale.DateToText(event.StartDate) + event.EventID;
}

std::optional<std::size_t> EventCollection::Find(std::string_view key, LocaleApi& locale) const {
  for (std::size_t i = 0; i < events_.size(); ++i) {
    // The identifier alone tells most events apart without making their keys.
    if (key.ends_with(events_[i].EventID) && KeyOf(events_[i], locale) == key) return i;
  }
  return std::nullopt;
}

}  // namespace velkor
