// tests/standin/ServedClasses.cpp: entries of the classes below Software\Classes.
#include "tests/standin/ServedClasses.h"

#include "platform/windows/com/Registration.h"
#include "platform/windows/system/Modules.h"
#include "platform/windows/system/WindowsRegistry.h"
#include "values/Error.h"

namespace velkor {
namespace {

/// Whose a name is; a code of failure for nobody's.
RegistryAnswer OwnerOf(const std::string& programId) {
  return WindowsRegistry().QueryValue(RootKey::LocalMachine,
                                      "Software\\Classes\\" + programId + "\\CLSID", "");
}

}  // namespace

void Register(const ServedClass& served) {
  const std::string name = served.programId;
  const std::string id = ToText(served.id);
  const RegistryAnswer owner = OwnerOf(name);
  if (owner.code == registry_codes::Success && owner.data != id) {
    throw Error(errors::KeyAlreadyExists, name + " is another program's; it stays as it is.");
  }
  const std::string clsid = "CLSID\\" + id;
  const ClassesValue values[] = {{name + "\\CLSID", "", id},
                                 {clsid + "\\LocalServer32", "", "\"" + ModulePath(nullptr) + "\""},
                                 {clsid + "\\ProgID", "", name}};
  WriteClasses(Registration::Machine, values);
}

void Unregister(const ServedClass& served) {
  const std::string id = ToText(served.id);
  RemoveClasses(Registration::Machine, "CLSID\\" + id);
  if (OwnerOf(served.programId).data == id) RemoveClasses(Registration::Machine, served.programId);
}

}  // namespace velkor
