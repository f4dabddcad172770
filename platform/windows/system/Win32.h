// platform/windows/system/Win32.h: the Windows header, without the macro that would rename a seam.
#pragma once

#include <windows.h>

// Expands to EnumCalendarInfoA or -W, and LocaleApi has a function of this name.
#undef EnumCalendarInfo
