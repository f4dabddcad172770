// platform/windows/system/Modules.cpp: asks the system for modules by address and by handle.
#include "platform/windows/system/Modules.h"

#include "platform/windows/system/Wide.h"

namespace velkor {

HINSTANCE ThisModule() {
  HMODULE module = nullptr;
  ::GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<LPCWSTR>(&ThisModule), &module);
  return module;
}

std::string ModulePath(HINSTANCE module) {
  // The longest path that the system knows.
  std::wstring path(32768, L'\0');
  path.resize(::GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
  return ToUtf8(path);
}

}  // namespace velkor
