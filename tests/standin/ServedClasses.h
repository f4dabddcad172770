// tests/standin/ServedClasses.h: what the program serves, and its entries in the registry;
// part of the calendar program for tests, never shipped.
#pragma once

#include "platform/windows/system/Win32.h"

namespace velkor {

struct ServedClass {
  CLSID id;
  const char* programId;
};

inline constexpr ServedClass ApplicationClass = {
    {0x6b1c8a02, 0x35d4, 0x4c77, {0x8e, 0x1f, 0x90, 0x2d, 0x4a, 0x57, 0x16, 0xc3}},
    "Outlook.Application"};
inline constexpr ServedClass CurrentUserClass = {
    {0x6b1c8a03, 0x35d4, 0x4c77, {0x8e, 0x1f, 0x90, 0x2d, 0x4a, 0x57, 0x16, 0xc3}},
    "ZQCDO.zqCurrentUser"};
inline constexpr ServedClass AppointmentItemClass = {
    {0x6b1c8a04, 0x35d4, 0x4c77, {0x8e, 0x1f, 0x90, 0x2d, 0x4a, 0x57, 0x16, 0xc3}},
    "ZQCDO.zqAppointmentItem"};

/// Writes the class for the machine, so that this program is its server. Throws Error where the
/// name is another program's, and when the registry refuses.
void Register(const ServedClass& served);
/// Takes the entries away; a name that is another program's stays. Throws Error.
void Unregister(const ServedClass& served);

}  // namespace velkor
