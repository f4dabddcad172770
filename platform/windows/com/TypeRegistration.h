// platform/windows/com/TypeRegistration.h: makes a type library and its interfaces known.
#pragma once

#include <string>

#include "platform/windows/com/ClassesKeys.h"

namespace velkor {

/// Registers the type library that a module carries as its first resource, with what lets its
/// interfaces cross processes, for programs of this word size. Throws Error.
/// @param module  full path of a program or library
void RegisterTypes(Registration registration, const std::string& module);
/// The counterpart; one that is not registered is no failure, and what the other word size
/// registered stays. Throws Error.
void UnregisterTypes(Registration registration, const std::string& module);

/// "{00000000-0000-0000-0000-000000000000}"
std::string ToText(const GUID& id);

}  // namespace velkor
