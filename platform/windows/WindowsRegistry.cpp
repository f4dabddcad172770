// platform/windows/WindowsRegistry.cpp: opening, asking for the size, reading.
#include "platform/windows/WindowsRegistry.h"

#include "platform/windows/Wide.h"

namespace velkor {
namespace {

HKEY ToWindows(RootKey root) {
  switch (root) {
    case RootKey::ClassesRoot:
      return HKEY_CLASSES_ROOT;
    case RootKey::CurrentUser:
      return HKEY_CURRENT_USER;
    case RootKey::LocalMachine:
      return HKEY_LOCAL_MACHINE;
    case RootKey::Users:
      return HKEY_USERS;
    case RootKey::PerformanceData:
      return HKEY_PERFORMANCE_DATA;
    case RootKey::CurrentConfig:
      return HKEY_CURRENT_CONFIG;
    case RootKey::DynData:
      return HKEY_DYN_DATA;
  }
  return nullptr;
}

}  // namespace

RegistryAnswer ReadRegistryValue(HKEY key, std::string_view name) {
  const std::wstring wideName = ToWide(name);
  std::string bytes;
  DWORD type = 0;
  LSTATUS code = ERROR_MORE_DATA;
  // The value may grow between asking for its size and reading it.
  for (int attempt = 0; code == ERROR_MORE_DATA && attempt < 10; ++attempt) {
    DWORD size = 0;
    code = ::RegQueryValueExW(key, wideName.c_str(), nullptr, &type, nullptr, &size);
    if (code != ERROR_SUCCESS && code != ERROR_MORE_DATA) break;
    bytes.resize(size);
    code = ::RegQueryValueExW(key, wideName.c_str(), nullptr, &type,
                              reinterpret_cast<BYTE*>(bytes.data()), &size);
    if (code == ERROR_SUCCESS) bytes.resize(size);
  }
  if (code != ERROR_SUCCESS) return {code, {}};
  if (type != REG_SZ && type != REG_EXPAND_SZ) return {registry_codes::Success, bytes};
  std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
  bytes.copy(reinterpret_cast<char*>(text.data()), text.size() * sizeof(wchar_t));
  while (text.ends_with(L'\0')) text.pop_back();
  return {registry_codes::Success, ToUtf8(text)};
}

RegistryAnswer WindowsRegistry::QueryValue(RootKey root, std::string_view subKey,
                                           std::string_view name) {
  HKEY opened = nullptr;
  const LSTATUS code =
      ::RegOpenKeyExW(ToWindows(root), ToWide(subKey).c_str(), 0, KEY_QUERY_VALUE, &opened);
  if (code != ERROR_SUCCESS) return {code, {}};
  const RegistryKey key(opened);
  return ReadRegistryValue(key.get(), name);
}

}  // namespace velkor
