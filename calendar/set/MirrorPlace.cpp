// calendar/set/MirrorPlace.cpp: the states of a mirror before and after a save.
#include "calendar/set/MirrorPlace.h"

#include <optional>
#include <utility>

#include "calendar/ics/read/IcsParser.h"
#include "values/Error.h"

namespace velkor {
namespace {

/// The only item of a calendar; none where there is another number of them.
std::optional<CalendarItem> OnlyItemOf(std::string_view whole) {
  ParsedCalendar calendar = ParseIcs(whole, "appointment", {});
  if (calendar.items.size() != 1) return std::nullopt;
  return std::move(calendar.items.front());
}

}  // namespace

/// An empty calendar is another than one that was never fetched.
PlaceMark MirrorPlace::Mark() const {
  return mirror_.Revision() + (mirror_.State().synchronised == 0 ? " never" : "");
}

/// Nobody else changes the mirror between the two states.
template <typename Write>
CalendarItem MirrorPlace::Save(const Write& write) {
  const auto hold = writer_.Hold();
  States states{Mark(), {}};
  CalendarItem item = write();
  states.after = Mark();
  lastSave_ = std::move(states);
  return item;
}

CalendarItem MirrorPlace::WriteNew(const CalendarItem& item, bool reminder) {
  return Save([&] { return writer_.WriteNew(item, reminder); });
}

CalendarItem MirrorPlace::WriteChange(const CalendarItem& after, const ItemChange& change) {
  return Save([&] { return writer_.WriteChange(after, change); });
}

void MirrorPlace::WriteDeletion(const CalendarItem& item) {
  Save([&] {
    writer_.WriteDeletion(item);
    return item;
  });
}

void MirrorPlace::WriteCategory(std::string_view from, std::string_view to, Date now) {
  lastSave_ = {};
  writer_.WriteCategory(from, to, now);
}

CalendarItem MirrorPlace::TakeWhole(std::string_view whole, Date now) {
  return Save([&] {
    const auto taken = OnlyItemOf(whole);
    try {
      return writer_.TakeWhole(whole, now);
    } catch (const Error&) {
      // A move that was stopped between its two steps is made again.
      if (!taken) throw;
      auto there = OnlyItemOf(writer_.WholeOf(taken->entryId));
      if (!there || !SameContent(*taken, *there)) throw;
      return *std::move(there);
    }
  });
}

}  // namespace velkor
