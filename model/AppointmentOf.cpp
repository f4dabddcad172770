// model/AppointmentOf.cpp: the appointment that an item of a calendar folder stands for.
#include "model/AppointmentOf.h"

namespace velkor {

std::unique_ptr<OutlookItem> AppointmentOf(std::unique_ptr<OutlookItem> item) {
  const int itemClass = item->Class();
  if (itemClass == outlook::ClassAppointment) return item;
  return outlook::IsMeetingClass(itemClass) ? item->GetAssociatedAppointment(false) : nullptr;
}

}  // namespace velkor
