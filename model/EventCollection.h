// model/EventCollection.h: the events of the displayed span in the order of loading.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/CalEvent.h"

namespace velkor {

class LocaleApi;

/// Keyed by start and EventID, so that the occurrences of one appointment are distinct; an event
/// without EventID is never in it.
class EventCollection {
 public:
  EventCollection() = default;
  /// Takes events in order; those without EventID, and those whose key an earlier one has, are
  /// left out.
  explicit EventCollection(std::vector<CalEvent> events);

  /// @return false when the event has no EventID or its key is in use; nothing is added then
  bool Add(CalEvent event);
  /// Removes every occurrence of an appointment.
  void RemoveAppointment(std::string_view eventId);
  /// Removes the event with this key.
  void Remove(std::string_view key, LocaleApi& locale);

  std::size_t Count() const { return events_.size(); }
  const CalEvent& operator[](std::size_t index) const { return events_[index]; }
  CalEvent& operator[](std::size_t index) { return events_[index]; }
  auto begin() const { return events_.begin(); }
  auto end() const { return events_.end(); }
  auto begin() { return events_.begin(); }
  auto end() { return events_.end(); }

  /// The key of an event: its start as the platform's text, immediately followed by its EventID.
  static std::string KeyOf(const CalEvent& event, LocaleApi& locale);
  /// Index of the event with this key.
  std::optional<std::size_t> Find(std::string_view key, LocaleApi& locale) const;

 private:
  struct Key {
    std::int64_t start;
    std::uint32_t idHash;
    std::uint32_t index;
  };

  void BuildOrder();
  /// Orders the keys of one start and finds the events that repeat an earlier one's EventID.
  void SortGroup(std::span<Key> group, std::vector<std::uint32_t>& repeated) const;

  std::vector<CalEvent> events_;
  /// Indices of all events, ordered by start (to the second, as a key shows it), then by the hash
  /// of the EventID, then by the EventID itself. Long identifiers begin alike; hashes rarely do.
  std::vector<std::uint32_t> order_;
};

}  // namespace velkor
