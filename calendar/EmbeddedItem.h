// calendar/EmbeddedItem.h: one item of a folder as callers of the object model see it.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "calendar/CalendarStore.h"
#include "calendar/FilterText.h"
#include "platform/Outlook.h"

namespace velkor {

/// What the objects of one application share.
struct EmbeddedSession {
  CalendarStore& store;
  /// What stands between category names: the list separator and a blank.
  std::string categorySeparator;
  DateOrder dateOrder = DateOrder::MonthDayYear;
  std::function<void(OutlookItem&)> inspector;
  std::function<void(std::function<void()>)> post;
  std::function<Date()> clock;
};

/// One item, or one occurrence of a recurring item (`index` into its occurrences, else -1).
struct ItemEntry {
  std::shared_ptr<const CalendarItem> item;
  std::int32_t index = -1;

  Date Start() const;
  Date End() const;
  const AppointmentFields& Fields() const;
  bool Passes(const Filter& filter) const;
};

/// @param folder  that holds the item; it outlives the object. Null for an item in no folder, which
///                cannot be saved.
std::unique_ptr<OutlookItem> MakeEmbeddedItem(CalendarFolder* folder, ItemEntry entry,
                                              std::shared_ptr<const EmbeddedSession> session);

/// An appointment that is in no folder before it is saved: the half hour after the session's time.
std::unique_ptr<OutlookItem> MakeNewItem(CalendarFolder& folder, std::string_view messageClass,
                                         std::shared_ptr<const EmbeddedSession> session);

}  // namespace velkor
