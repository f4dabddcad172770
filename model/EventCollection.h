// model/EventCollection.h: the events of the displayed span in the order of loading.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
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

  /// Takes more events in. All stand in order of start then, as a load of them all gives them, and
  /// of equal starts those first that were there; what has no EventID or a key in use stays out.
  /// @param replaced  identifiers whose events make way; one that comes again with the same start
  ///                  keeps its place
  void Insert(std::vector<CalEvent> arrivals, const std::unordered_set<std::string>& replaced = {});
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

  /// Takes out the events without EventID and those that repeat an earlier one's key.
  void DropRepeated();
  /// Finds among the keys of one start the events that repeat an earlier one's EventID. Long
  /// identifiers begin alike; hashes rarely do.
  void FindRepeated(std::span<Key> group, std::vector<std::uint32_t>& repeated) const;

  std::vector<CalEvent> events_;
};

}  // namespace velkor
