// hosts/windows/vkrRefresh/ServerRegistration.cpp: the keys of a server in a process of its own.
#include "hosts/windows/vkrRefresh/ServerRegistration.h"

#include "VelkorCacheUtility.h"
#include "platform/windows/com/ComCacheUtility.h"
#include "platform/windows/system/Modules.h"

namespace velkor {
namespace {

ClassRegistration Description() {
  ClassRegistration known =
      DescribeClass(CLSID_VelkorCacheUtility, "Velkor cache utility", CacheUtilityProgram,
                    LIBID_vkrRefresh, ModulePath(nullptr));
  known.values.push_back({known.Key() + "\\LocalServer32", "", '"' + known.module + '"'});
  return known;
}

}  // namespace

void RegisterServer(Registration registration) {
  Register(registration, Description());
}

void UnregisterServer(Registration registration) {
  Unregister(registration, Description());
}

}  // namespace velkor
