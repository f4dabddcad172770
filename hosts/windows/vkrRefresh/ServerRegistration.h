// hosts/windows/vkrRefresh/ServerRegistration.h: what makes the cache utility known to clients.
#pragma once

#include "platform/windows/com/Registration.h"

namespace velkor {

/// Registers the program where it lies. Nothing is left behind when that fails, which throws Error.
void RegisterServer(Registration registration);
/// What is not registered is no failure. Throws Error.
void UnregisterServer(Registration registration);

}  // namespace velkor
