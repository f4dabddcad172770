// tests/platform/windows/Apartment.h: a thread that has objects of other programs.
#pragma once

#include "platform/windows/system/Win32.h"
// After windows.h.
#include <ole2.h>

namespace velkor {

/// The component object model for as long as it lives.
struct Apartment {
  Apartment() { ::OleInitialize(nullptr); }
  ~Apartment() { ::OleUninitialize(); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
};

}  // namespace velkor
