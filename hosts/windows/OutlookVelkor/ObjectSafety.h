// hosts/windows/OutlookVelkor/ObjectSafety.h: the interface by which a control says what it is safe
// for.
#pragma once

#include "platform/windows/system/Win32.h"
// After windows.h.
#include <objsafe.h>

#ifdef __CRT_UUID_DECL
// The cross compiler's header declares the interface without what __uuidof reads.
__CRT_UUID_DECL(IObjectSafety, 0xcb5bdc81, 0x93c1, 0x11cf, 0x8f, 0x20, 0x00, 0x80, 0x5f, 0x2c, 0xd0,
                0x64)
#endif
