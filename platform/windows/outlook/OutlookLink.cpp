// platform/windows/outlook/OutlookLink.cpp: the classes of items, and answers without an object.
#include "platform/windows/outlook/OutlookLink.h"

#include "platform/Outlook.h"

namespace velkor {
namespace {

// MAPI_E_NOT_FOUND ("MAPI return codes").
constexpr HRESULT NotFound = static_cast<HRESULT>(0x8004010F);
// Subscript out of range, as an automation language puts it.
constexpr HRESULT OutOfRange = static_cast<HRESULT>(0x800A0009);

const char* ItemClassName(int number) {
  if (number == outlook::ClassAppointment) return "AppointmentItem";
  return outlook::IsMeetingClass(number) ? "MeetingItem" : "Item";
}

}  // namespace

bool IsNotFound(long number) {
  return number == NotFound || number == OutOfRange || number == DISP_E_BADINDEX;
}

AutomationClass& OutlookLink::ItemClass(int number) {
  return itemClasses_.try_emplace(number, ItemClassName(number)).first->second;
}

void OutlookLink::ForgetClasses() {
  for (AutomationClass* kind : {&application, &session, &user, &folders, &folder, &items, &item}) {
    kind->Forget();
  }
  for (auto& [number, kind] : itemClasses_) kind.Forget();
}

AutomationObject OutlookLink::NeedObject(AutomationClass& kind, const Variant& value,
                                         const AutomationClass& owner, std::string_view member) {
  AutomationObject object = Object(kind, value);
  if (!object) {
    program.Fail(NotFound, owner.Name() + "." + std::string(member), "there is no such object",
                 owner.Name());
  }
  return object;
}

}  // namespace velkor
