// platform/windows/AutomationItem.h: one item of the calendar program.
#pragma once

#include <map>
#include <optional>

#include "platform/Outlook.h"
#include "platform/windows/OutlookLink.h"

namespace velkor {

/// Reads each property once, until something is set or the item is saved or shown.
class AutomationItem : public OutlookItem {
 public:
  /// @param itemClass  its OlObjectClass where that is known
  AutomationItem(OutlookLink& link, ComPtr<IDispatch> object,
                 std::optional<int> itemClass = std::nullopt)
      : link_(link), object_(std::move(object)), class_(itemClass) {}

  int Class() override;
  std::string EntryID() override { return Text("EntryID"); }
  std::string MessageClass() override { return Text("MessageClass"); }
  std::string Subject() override { return Text("Subject"); }
  std::string Categories() override { return Text("Categories"); }
  std::string Location() override { return Text("Location"); }
  std::string Body() override;
  Date Start() override { return Read("Start").ToDate(); }
  Date End() override { return Read("End").ToDate(); }
  bool AllDayEvent() override { return Read("AllDayEvent").ToBool(); }
  bool IsRecurring() override { return Read("IsRecurring").ToBool(); }
  Date LastModificationTime() override { return Read("LastModificationTime").ToDate(); }

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
  std::string Text(const char* member) { return Read(member).ToText(); }
  void Put(const char* member, const Variant& value);
  void Call(const char* member, AutomationObject::Arguments arguments = {});

  OutlookLink& link_;
  ComPtr<IDispatch> object_;
  std::optional<int> class_;
  std::map<std::string_view, Variant> known_;
};

/// Null where an answer holds no item.
std::unique_ptr<OutlookItem> ItemOf(OutlookLink& link, const Variant& value);

}  // namespace velkor
