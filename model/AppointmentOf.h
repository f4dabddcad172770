// model/AppointmentOf.h: the appointment that an item of a calendar folder stands for.
#pragma once

#include <memory>

#include "platform/Outlook.h"

namespace velkor {

/// An appointment as it is; of a meeting item the appointment behind it, which may be null; null
/// for any other item.
std::unique_ptr<OutlookItem> AppointmentOf(std::unique_ptr<OutlookItem> item);

}  // namespace velkor
