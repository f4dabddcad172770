// tests/standin/ItemObject.cpp: the members of items.
#include "tests/standin/ItemObject.h"

#include <type_traits>

#include "tests/standin/Inspector.h"
#include "values/Text.h"

namespace velkor {

template <auto Get, auto Set>
Variant ItemObject::Property(const Call& call) {
  using Value = std::invoke_result_t<decltype(Get), OutlookItem&>;
  if (!call.IsPut()) return Read<Get>(call);
  OutlookItem& item = *item_;
  if constexpr (std::is_same_v<Value, std::string>) {
    (item.*Set)(call[0].ToText());
  } else if constexpr (std::is_same_v<Value, Date>) {
    (item.*Set)(call[0].ToDate());
  } else {
    (item.*Set)(call[0].ToBool());
  }
  return {};
}

struct ItemObject::Tables {
  using Item = OutlookItem;
  using Self = ItemObject;

  // What both kinds have.
  static constexpr Member Class = {"Class", Bound<&Self::Read<&Item::Class>>};
  static constexpr Member EntryID = {"EntryID", Bound<&Self::Read<&Item::EntryID>>};
  static constexpr Member MessageClass = {"MessageClass", Bound<&Self::Read<&Item::MessageClass>>};
  static constexpr Member Subject = {
      "Subject", Bound<&Self::Property<&Item::Subject, &Item::SetSubject>>, true};
  static constexpr Member Categories = {
      "Categories", Bound<&Self::Property<&Item::Categories, &Item::SetCategories>>, true};
  static constexpr Member Body = {"Body", Bound<&Self::Property<&Item::Body, &Item::SetBody>>,
                                  true};
  static constexpr Member HTMLBody = {"HTMLBody", Bound<&Self::GetHtmlBody>};
  static constexpr Member LastModificationTime = {"LastModificationTime",
                                                  Bound<&Self::Read<&Item::LastModificationTime>>};
  static constexpr Member SaveItem = {"Save", Bound<&Self::Save>};
  static constexpr Member DeleteItem = {"Delete", Bound<&Self::Delete>};
  static constexpr Member DisplayItem = {"Display", Bound<&Self::Display>};

  static constexpr Member AppointmentMembers[] = {
      Class,
      EntryID,
      MessageClass,
      Subject,
      Categories,
      Body,
      HTMLBody,
      LastModificationTime,
      SaveItem,
      DeleteItem,
      DisplayItem,
      {"Location", Bound<&Self::Property<&Item::Location, &Item::SetLocation>>, true},
      {"Start", Bound<&Self::Property<&Item::Start, &Item::SetStart>>, true},
      {"End", Bound<&Self::Property<&Item::End, &Item::SetEnd>>, true},
      {"AllDayEvent", Bound<&Self::Property<&Item::AllDayEvent, &Item::SetAllDayEvent>>, true},
      {"IsRecurring", Bound<&Self::Read<&Item::IsRecurring>>},
      {"ReminderSet", Bound<&Self::ReminderSet>, true},
  };
  static constexpr Member MeetingMembers[] = {
      Class,        EntryID,
      MessageClass, Subject,
      Categories,   Body,
      HTMLBody,     LastModificationTime,
      SaveItem,     DeleteItem,
      DisplayItem,  {"GetAssociatedAppointment", Bound<&Self::GetAssociatedAppointment>},
  };
  static constexpr WatchedClass Appointment = {{"AppointmentItem", 600, AppointmentMembers}};
  static constexpr WatchedClass Meeting = {{"MeetingItem", 700, MeetingMembers}};
};

ItemObject::ItemObject(StandInSession& session, std::unique_ptr<OutlookItem> item)
    : ServedObject(session,
                   outlook::IsMeetingClass(item->Class()) ? Tables::Meeting : Tables::Appointment),
      item_(std::move(item)) {}

std::string ItemObject::HtmlBody() {
  std::string html = item_->Body();
  for (const auto& [from, to] :
       {std::pair{"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}, {"\r\n", "<br>\r\n"}}) {
    html = Replace(html, from, to);
  }
  return "<html><body>" + html + "</body></html>";
}

Variant ItemObject::ReminderSet(const Call& call) {
  if (call.IsPut()) {
    reminder_ = call[0].ToBool();
    item_->SetReminderSet(*reminder_);
    return {};
  }
  if (reminder_) return Variant(*reminder_);
  const auto saved = Shared().reminders.find(item_->EntryID());
  return Variant(saved == Shared().reminders.end() || saved->second);
}

Variant ItemObject::Save(const Call&) {
  item_->Save();
  if (reminder_) Shared().reminders[item_->EntryID()] = *reminder_;
  return {};
}

Variant ItemObject::Delete(const Call&) {
  item_->Delete();
  return {};
}

Variant ItemObject::Display(const Call& call) {
  const ComPtr<ItemObject> self(this);
  const auto save = [self](const std::string& subject) {
    self->Item().SetSubject(subject);
    self->Item().Save();
  };
  const Inspector inspector = OpenInspector(item_->Subject(), save);
  if (call.IsTrue(0)) WaitForClose(inspector, Shared().loop);
  return {};
}

Variant ItemObject::GetAssociatedAppointment(const Call& call) {
  return ToObject(Shared(), item_->GetAssociatedAppointment(call.IsTrue(0)));
}

Variant ToObject(StandInSession& session, std::unique_ptr<OutlookItem> item) {
  return item ? Variant(new ItemObject(session, std::move(item))) : Nothing();
}

}  // namespace velkor
