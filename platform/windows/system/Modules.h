// platform/windows/system/Modules.h: the program or library that code lies in.
#pragma once

#include <string>

#include "platform/windows/system/Win32.h"

namespace velkor {

/// The module that this code lies in.
HINSTANCE ThisModule();

/// Full path of the module; the program's for null.
std::string ModulePath(HINSTANCE module);

}  // namespace velkor
