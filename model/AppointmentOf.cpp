// model/AppointmentOf.cpp: the appointment that an item of a calendar folder stands for.
#include "model/AppointmentOf.h"

namespace velkor {

std::unique_ptr<OutlookItem> AppointmentOf(std::unique_ptr<OutlookItem> item) {
  switch (item->Class()) {
    case outlook::ClassAppointment:
      return item;
    case outlook::ClassMeetingRequest:
      return item->GetAssociatedAppointment(false);
    default:
      return nullptr;
  }
}

}  // namespace velkor
