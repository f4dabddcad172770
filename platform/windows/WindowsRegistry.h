// platform/windows/WindowsRegistry.h: the registry, and reading one of its values.
#pragma once

#include <memory>
#include <type_traits>

#include "platform/Registry.h"
#include "platform/windows/Win32.h"

namespace velkor {

struct CloseRegistryKey {
  void operator()(HKEY key) const { ::RegCloseKey(key); }
};
using RegistryKey = std::unique_ptr<std::remove_pointer_t<HKEY>, CloseRegistryKey>;

/// Reads one value of an open key; text without its terminating NUL.
RegistryAnswer ReadRegistryValue(HKEY key, std::string_view name);

class WindowsRegistry : public Registry {
 public:
  RegistryAnswer QueryValue(RootKey root, std::string_view subKey, std::string_view name) override;
};

}  // namespace velkor
