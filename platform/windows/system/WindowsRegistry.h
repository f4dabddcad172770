// platform/windows/system/WindowsRegistry.h: the registry, and reading one of its values.
#pragma once

#include <memory>
#include <type_traits>

#include "platform/Registry.h"
#include "platform/windows/system/Win32.h"

namespace velkor {

struct CloseRegistryKey {
  void operator()(HKEY key) const { ::RegCloseKey(key); }
};
using RegistryKey = std::unique_ptr<std::remove_pointer_t<HKEY>, CloseRegistryKey>;

/// Reads one value of an open key, whatever characters it has; text without its terminating NUL.
RegistryAnswer ReadWholeValue(HKEY key, std::string_view name);

/// Reads by the ANSI functions what the ANSI code page has every character of.
class WindowsRegistry : public Registry {
 public:
  RegistryAnswer QueryValue(RootKey root, std::string_view subKey, std::string_view name) override;
};

}  // namespace velkor
