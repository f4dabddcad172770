// hosts/yearplan/window/AppointmentInspector.h: the window in which one appointment is seen and
// changed.
#pragma once

#include "hosts/yearplan/window/CalendarChoice.h"

class QWidget;

namespace velkor {

class OutlookItem;

/// Shows the item until the window is closed. OK saves what was changed; when that is refused, the
/// window says why and stays open with everything that was typed. Cancel leaves the item as it
/// was. The times of a recurring item are shown and cannot be changed; nothing of an item can whose
/// calendar refuses.
void InspectAppointment(QWidget* parent, OutlookItem& item, const CalendarChoice& choice = {});

}  // namespace velkor
