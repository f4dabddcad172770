// hosts/windows/OutlookVelkor/Module.h: the library as the system loads it.
#pragma once

#include <string>

#include "platform/windows/ComObject.h"

namespace velkor {

/// What the container has to know before it makes a control: it redraws when its size changes,
/// works while it is seen, gets its site first and has its inside active at once (OLEMISC).
inline constexpr DWORD MiscStatus = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE |
                                    OLEMISC_INSIDEOUT | OLEMISC_ACTIVATEWHENVISIBLE |
                                    OLEMISC_SETCLIENTSITEFIRST;

/// The library's own file.
std::wstring ModulePath();
/// Of IYearPlan, from the library's own resources; null where they cannot be read.
ComPtr<ITypeInfo> LoadControlTypeInfo();

}  // namespace velkor
