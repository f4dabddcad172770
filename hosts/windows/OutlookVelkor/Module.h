// hosts/windows/OutlookVelkor/Module.h: what the system has to know of the control.
#pragma once

#include "platform/windows/com/ComObject.h"
#include "platform/windows/com/Registration.h"

namespace velkor {

/// The container redraws it when its size changes, has it work while it is seen, gives it its site
/// first and lets it be used without a frame of its own (OLEMISC).
inline constexpr DWORD MiscStatus = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE |
                                    OLEMISC_INSIDEOUT | OLEMISC_ACTIVATEWHENVISIBLE |
                                    OLEMISC_SETCLIENTSITEFIRST;

/// What people read for the control (AuxUserType): for one of its kind, and for its program.
inline constexpr const char* UserType = "Year planner";
inline constexpr const char* ApplicationName = "OutlookVelkor";

/// Makes the control known: program identifier OutlookVelkor.YearPlan, class, type library, and
/// that its stored properties may come from anywhere (CATID_SafeForInitializing). Throws Error, and
/// leaves nothing behind then.
void RegisterControl(Registration registration);
/// Removes all of it; what is not there is no failure. Throws Error.
void UnregisterControl(Registration registration);

}  // namespace velkor
