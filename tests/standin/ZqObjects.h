// tests/standin/ZqObjects.h: the helper classes zqCurrentUser and zqAppointmentItem by
// their names; part of the calendar program for tests, never shipped.
#pragma once

#include "tests/standin/ServedObject.h"

namespace velkor {

ComPtr<IDispatch> MakeCurrentUser(StandInSession& session);
/// Gives the texts of an item of this process.
ComPtr<IDispatch> MakeAppointmentItem(StandInSession& session);

}  // namespace velkor
