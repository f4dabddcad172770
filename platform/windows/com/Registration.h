// platform/windows/com/Registration.h: writes and removes what makes a class known to other
// programs.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "platform/windows/system/Win32.h"

namespace velkor {

/// Whom a class is registered for: everybody (HKEY_LOCAL_MACHINE, needs administrator rights), or
/// the current user (HKEY_CURRENT_USER). Both lie below Software\Classes.
enum class Registration { Machine, User };

/// A text value below Software\Classes; an empty name is the key's own value.
struct ClassesValue {
  std::string key;
  std::string name;
  std::string text;
};

/// Makes the keys and writes the values. Throws Error with the system's number at the first that
/// cannot be written; those before stay.
void WriteClasses(Registration registration, std::span<const ClassesValue> values);

/// Removes a key with all below it; one that is not there is no failure. Throws Error.
/// @param key  below Software\Classes, not empty
void RemoveClasses(Registration registration, const std::string& key);

/// What makes one class known, with the type library of the module that it lies in.
struct ClassRegistration {
  /// Full path.
  std::string module;
  /// All that are the class's own below Software\Classes.
  std::vector<std::string> keys;
  std::vector<ClassesValue> values;
};

/// What every class tells of itself; what depends on how it is served is added to the values.
/// @param programId  the name that programs find it by
ClassRegistration DescribeClass(const GUID& id, const std::string& name,
                                const std::string& programId, const GUID& types,
                                const std::string& module);

/// Nothing is left behind when that fails, which throws Error.
void Register(Registration registration, const ClassRegistration& known);
/// What is not registered is no failure. Throws Error.
void Unregister(Registration registration, const ClassRegistration& known);

/// Registers the type library that a module carries as its first resource, with what lets its
/// interfaces cross processes. Throws Error.
/// @param module  full path of a program or library
void RegisterTypes(Registration registration, const std::string& module);
/// The counterpart; one that is not registered is no failure. Throws Error.
void UnregisterTypes(Registration registration, const std::string& module);

/// "{00000000-0000-0000-0000-000000000000}"
std::string ToText(const GUID& id);

}  // namespace velkor
