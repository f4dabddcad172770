// calendar/EmbeddedItem.cpp: reading, setting and saving one item.
#include "calendar/EmbeddedItem.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "values/Error.h"
#include "values/Text.h"

namespace velkor {
namespace {

[[noreturn]] void Fail(const std::string& what) {
  throw Error(errors::CalendarFailed, what, "Calendar");
}

class EmbeddedItem : public OutlookItem {
 public:
  EmbeddedItem(CalendarFolder* folder, ItemEntry entry,
               std::shared_ptr<const EmbeddedSession> session)
      : folder_(folder), entry_(std::move(entry)), session_(std::move(session)) {}

  int Class() override { return entry_.item->itemClass; }
  std::string EntryID() override { return entry_.item->entryId; }
  std::string MessageClass() override { return entry_.item->messageClass; }
  std::string Subject() override { return change_.subject.value_or(entry_.Fields().subject); }
  std::string Categories() override {
    std::string joined;
    for (const std::string& name : change_.categories.value_or(entry_.Fields().categories)) {
      if (!joined.empty()) joined += session_->categorySeparator;
      joined += name;
    }
    return joined;
  }
  std::string Location() override { return change_.location.value_or(entry_.Fields().location); }
  std::string Body() override { return change_.body.value_or(entry_.Fields().body); }
  Date Start() override { return change_.start.value_or(entry_.Start()); }
  Date End() override {
    if (change_.end) return *change_.end;
    // Before its end is set, an appointment that is moved keeps its length.
    const std::int64_t length = entry_.End().Seconds() - entry_.Start().Seconds();
    return Date::FromSeconds(Start().Seconds() + length);
  }
  bool AllDayEvent() override { return change_.allDay.value_or(entry_.Fields().allDay); }
  bool IsRecurring() override { return entry_.item->recurring; }
  Date LastModificationTime() override { return entry_.item->lastModified; }

  void SetSubject(std::string_view subject) override {
    Set(change_.subject, StorableLine(subject), entry_.Fields().subject);
  }
  void SetCategories(std::string_view categories) override {
    const std::string_view separator = session_->categorySeparator;
    std::vector<std::string> names;
    ForEachPiece(StorableLine(categories), Trim(separator), [&](std::string_view piece) {
      if (!Trim(piece).empty()) names.emplace_back(Trim(piece));
      return true;
    });
    Set(change_.categories, std::move(names), entry_.Fields().categories);
  }
  void SetLocation(std::string_view location) override {
    Set(change_.location, StorableLine(location), entry_.Fields().location);
  }
  void SetBody(std::string_view body) override {
    Set(change_.body, StorableLines(body), entry_.Fields().body);
  }
  void SetStart(Date start) override { Set(change_.start, Moment(start), entry_.Start()); }
  void SetEnd(Date end) override {
    // Also one that equals the old end is held, or it would move along with the start.
    change_.end = Moment(end);
  }
  void SetAllDayEvent(bool allDay) override {
    Set(change_.allDay, bool{allDay}, entry_.Fields().allDay);
  }
  void SetReminderSet(bool set) override { change_.reminder = set; }

  void Save() override {
    if (!folder_) Fail("The appointment is in no calendar; it cannot be saved.");
    ItemChange change = change_;
    change.end.reset();
    if (End() != entry_.End() || change.start) change.end = End();
    if (entry_.item->entryId.empty()) {
      entry_.item = folder_->SaveNew(WithChange(*entry_.item, change),
                                     change.reminder.value_or(false), Now(*session_));
    } else {
      const Date start = entry_.Start();
      const bool isOccurrence = entry_.index >= 0;
      entry_.item = folder_->SaveChange(entry_.item->entryId, change, Now(*session_));
      entry_.index = isOccurrence ? OccurrenceAt(start) : -1;
    }
    change_ = {};
  }
  void Delete() override {
    if (!folder_ || entry_.item->entryId.empty()) {
      Fail("The appointment is in no calendar; it cannot be deleted.");
    }
    folder_->Delete(entry_.item->entryId);
  }
  void Display(bool /*modal*/) override {
    if (!session_->inspector) Fail("There is no window here to show an appointment in.");
    session_->inspector(*this);
  }

  std::unique_ptr<OutlookItem> GetAssociatedAppointment(bool /*addToCalendar*/) override {
    const auto& appointment = entry_.item->appointment;
    if (!appointment) return nullptr;
    CalendarFolder* folder = session_->store.FolderOfItem(appointment->entryId);
    const auto current = folder ? folder->Find(appointment->entryId) : appointment;
    return MakeEmbeddedItem(folder, {current, -1}, session_);
  }

  static Date Now(const EmbeddedSession& session) {
    return session.clock ? Moment(session.clock()) : Date();
  }

 private:
  /// What is set to the value that is there already is no change.
  template <typename Value>
  static void Set(std::optional<Value>& change, Value value, const Value& current) {
    change.reset();
    if (!(value == current)) change = std::move(value);
  }

  static Date Moment(Date date) {
    if (!date.IsValid()) Fail("A date of the appointment lies outside the years 100 to 9999.");
    return Date::FromSeconds(date.Seconds());
  }

  std::int32_t OccurrenceAt(Date start) const {
    const auto& occurrences = entry_.item->occurrences;
    const auto same = std::find_if(
        occurrences.begin(), occurrences.end(),
        [&](const CalendarOccurrence& occurrence) { return occurrence.start == start; });
    return same == occurrences.end() ? -1 : static_cast<std::int32_t>(same - occurrences.begin());
  }

  CalendarFolder* folder_;
  ItemEntry entry_;
  std::shared_ptr<const EmbeddedSession> session_;
  ItemChange change_;
};

}  // namespace

Date ItemEntry::Start() const {
  return index < 0 ? item->start : item->occurrences[static_cast<std::size_t>(index)].start;
}

Date ItemEntry::End() const {
  return index < 0 ? item->end : item->occurrences[static_cast<std::size_t>(index)].end;
}

const AppointmentFields& ItemEntry::Fields() const {
  if (index < 0) return item->fields;
  const std::int32_t changed = item->occurrences[static_cast<std::size_t>(index)].changed;
  return changed < 0 ? item->fields : item->changed[static_cast<std::size_t>(changed)];
}

bool ItemEntry::Passes(const Filter& filter) const {
  const AppointmentFields& fields = Fields();
  return Matches(filter, {Start(), End(), fields.subject, fields.categories, item->messageClass});
}

std::unique_ptr<OutlookItem> MakeEmbeddedItem(CalendarFolder* folder, ItemEntry entry,
                                              std::shared_ptr<const EmbeddedSession> session) {
  return std::make_unique<EmbeddedItem>(folder, std::move(entry), std::move(session));
}

std::unique_ptr<OutlookItem> MakeNewItem(CalendarFolder& folder, std::string_view messageClass,
                                         std::shared_ptr<const EmbeddedSession> session) {
  constexpr std::int64_t HalfHour = 1800;
  CalendarItem item;
  if (!messageClass.empty()) item.messageClass = StorableLine(messageClass);
  const std::int64_t now = EmbeddedItem::Now(*session).Seconds();
  item.start = Date::FromSeconds(now + HalfHour - now % HalfHour);
  item.end = Date::FromSeconds(item.start.Seconds() + HalfHour);
  return MakeEmbeddedItem(&folder, {std::make_shared<const CalendarItem>(std::move(item)), -1},
                          std::move(session));
}

}  // namespace velkor
