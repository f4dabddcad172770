// platform/windows/outlook/AutomationItem.h: one item of the calendar program.
#pragma once

#include <map>
#include <optional>

#include "platform/Outlook.h"
#include "platform/windows/outlook/OutlookLink.h"

namespace velkor {

/// Reads each property once, until something is set or the item is saved or shown.
class AutomationItem : public OutlookItem {
 public:
  /// @param itemClass  its OlObjectClass where that is known
  AutomationItem(OutlookLink& link, AutomationObject item,
                 std::optional<int> itemClass = std::nullopt)
      : link_(link), item_(std::move(item)), class_(itemClass) {}

  int Class() override;
  std::string EntryID() override { return As("EntryID", &Variant::ToText); }
  std::string MessageClass() override { return As("MessageClass", &Variant::ToText); }
  std::string Subject() override { return As("Subject", &Variant::ToText); }
  std::string Categories() override { return As("Categories", &Variant::ToText); }
  std::string Location() override { return As("Location", &Variant::ToText); }
  std::string Body() override;
  Date Start() override { return As("Start", &Variant::ToDate); }
  Date End() override { return As("End", &Variant::ToDate); }
  bool AllDayEvent() override { return As("AllDayEvent", &Variant::ToBool); }
  bool IsRecurring() override { return As("IsRecurring", &Variant::ToBool); }
  Date LastModificationTime() override { return As("LastModificationTime", &Variant::ToDate); }

  void SetSubject(std::string_view subject) override { Put("Subject", Variant(subject)); }
  void SetCategories(std::string_view names) override { Put("Categories", Variant(names)); }
  void SetLocation(std::string_view location) override { Put("Location", Variant(location)); }
  void SetBody(std::string_view body) override { Put("Body", Variant(body)); }
  void SetStart(Date start) override { Put("Start", Variant(start)); }
  void SetEnd(Date end) override { Put("End", Variant(end)); }
  void SetAllDayEvent(bool allDay) override { Put("AllDayEvent", Variant(allDay)); }
  void SetReminderSet(bool set) override { Put("ReminderSet", Variant(set)); }
  void Save() override { Call("Save"); }
  void Delete() override { Call("Delete"); }
  void Display(bool modal) override;

  std::unique_ptr<OutlookItem> GetAssociatedAppointment(bool addToCalendar) override;

 private:
  /// By the member identifiers of its own class.
  AutomationObject Object();
  const Variant& Read(const char* member);
  template <typename Result>
  Result As(const char* member, Result (Variant::*conversion)() const) {
    return Object().Converted(member, Read(member), conversion);
  }
  void Put(const char* member, const Variant& value);
  void Call(const char* member, AutomationObject::Arguments arguments = {});

  OutlookLink& link_;
  /// By what the items of all classes share.
  AutomationObject item_;
  std::optional<int> class_;
  std::map<std::string_view, Variant> known_;
};

/// Null where an answer holds no item.
std::unique_ptr<OutlookItem> ItemOf(OutlookLink& link, const Variant& value);

}  // namespace velkor
