// calendar/mirror/ObjectText.h: what one object of a server's calendar says: whose it is, and the
// values of its fields.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/CalendarItem.h"
#include "calendar/ics/read/IcsDocument.h"

namespace velkor {

/// What one person may change without touching what another one does.
enum class ItemField { Subject, Categories, Location, Body, Times, Reminder };
inline constexpr ItemField AllItemFields[] = {ItemField::Subject,  ItemField::Categories,
                                              ItemField::Location, ItemField::Body,
                                              ItemField::Times,    ItemField::Reminder};

/// The appointment that an object stands for: the one that is known by its UID, else the first;
/// null where there is none.
const IcsAppointment* MainOf(const IcsDocument& document);

/// That one.
struct ObjectAppointment {
  std::string uid = {};
  /// Without the occurrences of a recurring one; its identifier is the one within the object.
  CalendarItem item = {};
  bool reminder = false;
  /// Seconds since 1970 of the last change.
  std::optional<std::int64_t> modified = {};
};

/// None for what is no calendar or holds no appointment.
std::optional<ObjectAppointment> ReadObject(std::string_view bytes);

/// The UID of the first event; empty where there is none.
std::string UidOfObject(std::string_view bytes);

bool HasSame(ItemField field, const ObjectAppointment& a, const ObjectAppointment& b);
/// The fields that a change sets.
std::vector<ItemField> FieldsOf(const ItemChange& change);
/// Adds a field's value to a change.
void SetField(ItemChange& change, ItemField field, const ObjectAppointment& from);
/// A field's value in words.
std::string WordsOf(ItemField field, const ObjectAppointment& appointment);

/// Seconds since 1970 of a local time, and back; a time outside the years 100 to 9999 is the
/// nearest within.
std::int64_t UnixTime(Date local);
Date LocalTime(std::int64_t unixTime);

}  // namespace velkor
