// tests/standin/Inspector.h: the window that shows one appointment; part of the calendar
// program for tests, never shipped.
#pragma once

#include "platform/Outlook.h"

namespace velkor {

/// Opens a dialog (class "#32770", title "SUBJECT - Appointment") with an edit for the subject
/// (identifier 100), Save & Close (IDOK) and Close (IDCANCEL), and waits until it is closed.
void ShowInspector(OutlookItem& item);

}  // namespace velkor
