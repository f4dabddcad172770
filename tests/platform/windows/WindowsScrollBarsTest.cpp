// tests/platform/windows/WindowsScrollBarsTest.cpp: real messages of a window's own scroll bars.
#include "platform/windows/WindowsScrollBars.h"
