// hosts/windows/vkrRefresh/ServerRegistration.cpp: the keys of a server in a process of its own.
#include "hosts/windows/vkrRefresh/ServerRegistration.h"

#include "VelkorCacheUtility.h"
#include "platform/windows/com/ComCacheUtility.h"
#include "platform/windows/system/Modules.h"

namespace velkor {
namespace {

std::string ClassKey() {
  return "CLSID\\" + ToText(CLSID_VelkorCacheUtility);
}

}  // namespace

void RegisterServer(Registration registration) {
  const std::string program = ModulePath(nullptr);
  const std::string description = "Velkor cache utility";
  const ClassesValue values[] = {
      {ClassKey(), {}, description},
      {ClassKey() + "\\LocalServer32", {}, "\"" + program + "\""},
      {ClassKey() + "\\ProgID", {}, CacheUtilityProgram},
      {ClassKey() + "\\Programmable", {}, {}},
      {ClassKey() + "\\TypeLib", {}, ToText(LIBID_vkrRefresh)},
      {ClassKey() + "\\Version", {}, "1.0"},
      {CacheUtilityProgram, {}, description},
      {std::string(CacheUtilityProgram) + "\\CLSID", {}, ToText(CLSID_VelkorCacheUtility)},
  };
  try {
    WriteClasses(registration, values);
    RegisterTypes(registration, program);
  } catch (const Error&) {
    try {
      UnregisterServer(registration);
    } catch (const Error&) {
      // The first failure is the one to tell.
    }
    throw;
  }
}

void UnregisterServer(Registration registration) {
  RemoveClasses(registration, CacheUtilityProgram);
  RemoveClasses(registration, ClassKey());
  UnregisterTypes(registration, ModulePath(nullptr));
}

}  // namespace velkor
