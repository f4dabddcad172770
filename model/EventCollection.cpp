// model/EventCollection.cpp: the events of the displayed span in the order of loading.
#include "model/EventCollection.h"

#include <algorithm>
#include <utility>

#include "platform/LocaleApi.h"

namespace velkor {

EventCollection::EventCollection(std::vector<CalEvent> events) : events_(std::move(events)) {
  std::erase_if(events_, [](const CalEvent& event) { return event.EventID.empty(); });
  BuildOrder();
}

void EventCollection::BuildOrder() {
  // Seconds are worked out once for each event. A cache file is in order of start already, and a
  // sort of what is in order is cheap.
  std::vector<std::pair<std::int64_t, std::uint32_t>> keys;
  keys.reserve(events_.size());
  for (std::uint32_t i = 0; i < events_.size(); ++i) {
    keys.emplace_back(events_[i].StartDate.Seconds(), i);
  }
  if (!std::is_sorted(keys.begin(), keys.end())) std::sort(keys.begin(), keys.end());
  const auto idOf = [&](const auto& key) -> const std::string& {
    return events_[key.second].EventID;
  };
  std::vector<std::uint32_t> repeated;
  for (auto group = keys.begin(); group != keys.end();) {
    const auto groupEnd =
        std::find_if(group, keys.end(), [&](const auto& key) { return key.first != group->first; });
    if (groupEnd - group > 1) {
      std::sort(group, groupEnd, [&](const auto& a, const auto& b) {
        const int order = idOf(a).compare(idOf(b));
        return order != 0 ? order < 0 : a.second < b.second;
      });
      for (auto key = group + 1; key != groupEnd; ++key) {
        if (idOf(*key) == idOf(key[-1])) repeated.push_back(key->second);
      }
    }
    group = groupEnd;
  }
  if (!repeated.empty()) {
    std::sort(repeated.begin(), repeated.end());
    std::uint32_t index = 0;
    std::erase_if(events_, [&](const CalEvent&) {
      return std::binary_search(repeated.begin(), repeated.end(), index++);
    });
    BuildOrder();
    return;
  }
  order_.clear();
  order_.reserve(keys.size());
  for (const auto& key : keys) order_.push_back(key.second);
}

bool EventCollection::Add(CalEvent event) {
  if (event.EventID.empty()) return false;
  const std::int64_t start = event.StartDate.Seconds();
  const auto compare = [&](std::uint32_t index) {
    const std::int64_t other = events_[index].StartDate.Seconds();
    if (other != start) return other < start ? -1 : 1;
    return events_[index].EventID.compare(event.EventID);
  };
  const auto place = std::partition_point(order_.begin(), order_.end(),
                                          [&](std::uint32_t index) { return compare(index) < 0; });
  if (place != order_.end() && compare(*place) == 0) return false;
  order_.insert(place, static_cast<std::uint32_t>(events_.size()));
  events_.push_back(std::move(event));
  return true;
}

void EventCollection::RemoveAppointment(std::string_view eventId) {
  if (std::erase_if(events_, [&](const CalEvent& event) { return event.EventID == eventId; }) > 0) {
    BuildOrder();
  }
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
