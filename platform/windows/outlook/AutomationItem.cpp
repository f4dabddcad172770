// platform/windows/outlook/AutomationItem.cpp: an item's properties and commands by name.
#include "platform/windows/outlook/AutomationItem.h"

#include "values/Error.h"

namespace velkor {

int AutomationItem::Class() {
  if (!class_) {
    class_ = item_.GetInt("Class");
  }
  return *class_;
}

AutomationObject AutomationItem::Object() {
  return {link_.program, link_.ItemClass(Class()), item_.Get()};
}

const Variant& AutomationItem::Read(const char* member) {
  const auto found = known_.find(member);
  if (found != known_.end()) return found->second;
  Variant value = Object().Get(member);
  return known_.insert_or_assign(member, std::move(value)).first->second;
}

void AutomationItem::Put(const char* member, const Variant& value) {
  known_.clear();
  Object().Put(member, value);
}

void AutomationItem::Call(const char* member, AutomationObject::Arguments arguments) {
  known_.clear();
  Object().Call(member, arguments);
}

std::string AutomationItem::Body() {
  if (!known_.contains("Body")) {
    if (auto text = link_.helpers.Body(item_.Get())) {
      known_.insert_or_assign("Body", Variant(*text));
    }
  }
  return As("Body", &Variant::ToText);
}

void AutomationItem::Display(bool modal) {
  // Else the inspector may open behind the window that the user works in.
  link_.program.Attempt([&] { return ::CoAllowSetForegroundWindow(item_.Get(), nullptr); });
  std::optional<ModalScope> scope;
  if (modal) scope.emplace(link_.program.Owner());
  Call("Display", {Variant(modal)});
}

std::unique_ptr<OutlookItem> AutomationItem::GetAssociatedAppointment(bool addToCalendar) {
  if (!outlook::IsMeetingClass(Class())) return nullptr;
  try {
    AutomationObject appointment = link_.Object(
        link_.item, Object().Call("GetAssociatedAppointment", {Variant(addToCalendar)}));
    if (!appointment) return nullptr;
    return std::make_unique<AutomationItem>(link_, std::move(appointment),
                                            outlook::ClassAppointment);
  } catch (const Error& error) {
    if (IsNotFound(error.Number())) return nullptr;
    throw;
  }
}

std::unique_ptr<OutlookItem> ItemOf(OutlookLink& link, const Variant& value) {
  AutomationObject item = link.Object(link.item, value);
  return item ? std::make_unique<AutomationItem>(link, std::move(item)) : nullptr;
}

}  // namespace velkor
