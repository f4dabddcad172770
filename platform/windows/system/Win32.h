// platform/windows/system/Win32.h: includes windows.h and undoes its macros that would rename ours.
#pragma once

#include <windows.h>

// Expands to EnumCalendarInfoA or -W, and LocaleApi has a function of this name.
#undef EnumCalendarInfo
