// tests/standin/TestingObject.h: what tests ask of the program beside a calendar's own
// members (Application.Testing); part of the calendar program for tests, never shipped.
#pragma once

#include "calendar/CalendarFolder.h"
#include "tests/standin/CallFaults.h"
#include "tests/standin/ServedObject.h"

namespace velkor {

/// Counts of the program's calls, its faults, and the content of its calendar.
/// @param own  the program of this object, whose calls are not among the counted ones
ComPtr<ServedObject> MakeTesting(ServedProgram& own, ServedProgram& counted, CallFaults& faults,
                                 CalendarFolder& calendar);

}  // namespace velkor
