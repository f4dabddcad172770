// platform/windows/com/Registration.h: writes and removes what makes a class known to other
// programs.
#pragma once

#include <string>
#include <vector>

#include "platform/windows/com/TypeRegistration.h"

namespace velkor {

/// What makes one class known, with the type library of the module that it lies in.
struct ClassRegistration {
  /// Full path.
  std::string module;
  /// "{00000000-0000-0000-0000-000000000000}"
  std::string id;
  /// All that programs find it by; common to both word sizes.
  std::vector<std::string> programIds;
  std::vector<ClassesValue> values;
  /// Below Software\Classes, of classes that come and go with this one.
  std::vector<std::string> otherKeys = {};

  /// The class's own key below Software\Classes, which each word size has one of.
  std::string Key() const { return "CLSID\\" + id; }
};

/// What every class tells of itself; what depends on how it is served is added to the values.
/// @param programId  the name that programs find it by
ClassRegistration DescribeClass(const GUID& id, const std::string& name,
                                const std::string& programId, const GUID& types,
                                const std::string& module);

/// For programs of this word size. Nothing is left behind when that fails, which throws Error.
void Register(Registration registration, const ClassRegistration& known);
/// What is not registered is no failure; what programs of the other word size need stays as long as
/// the class is registered for them. Throws Error.
void Unregister(Registration registration, const ClassRegistration& known);

}  // namespace velkor
