// platform/windows/com/Registration.cpp: a class's keys, with those of its types.
#include "platform/windows/com/Registration.h"

#include "platform/windows/com/ComError.h"

namespace velkor {

ClassRegistration DescribeClass(const GUID& id, const std::string& name,
                                const std::string& programId, const GUID& types,
                                const std::string& module) {
  ClassRegistration known{module, ToText(id), {programId}, {}};
  const std::string key = known.Key();
  known.values = {{programId, "", name},
                  {programId + "\\CLSID", "", known.id},
                  {key, "", name},
                  {key + "\\ProgID", "", programId},
                  {key + "\\Programmable", "", ""},
                  {key + "\\TypeLib", "", ToText(types)},
                  {key + "\\Version", "", "1.0"}};
  return known;
}

void Register(Registration registration, const ClassRegistration& known) {
  try {
    ClaimSharedKeys(registration, known.id);
    WriteClasses(registration, known.values);
    RegisterTypes(registration, known.module);
  } catch (const Error&) {
    try {
      Unregister(registration, known);
    } catch (const Error&) {
      // The first failure is the one to tell.
    }
    throw;
  }
}

void Unregister(Registration registration, const ClassRegistration& known) {
  RemoveClasses(registration, known.Key());
  for (const std::string& key : known.otherKeys) RemoveClasses(registration, key);
  if (!HasClasses(registration, known.Key(), WordSize::Other)) {
    for (const std::string& name : known.programIds) {
      RemoveClasses(registration, name);
      // Where a system keeps names for each word size as well.
      RemoveClasses(registration, name, WordSize::Other);
    }
  }
  UnregisterTypes(registration, known.module);
  DisclaimSharedKeys(registration, known.id);
}

}  // namespace velkor
