// platform/Registry.h: reading values of the registry.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <utility>

namespace velkor {

enum class RootKey {
  ClassesRoot,
  CurrentUser,
  LocalMachine,
  Users,
  PerformanceData,
  CurrentConfig,
  DynData,
};

/// What the roots are called (winreg.h).
inline constexpr std::array<std::pair<std::string_view, RootKey>, 7> RootKeyNames{{
    {"HKEY_CLASSES_ROOT", RootKey::ClassesRoot},
    {"HKEY_CURRENT_USER", RootKey::CurrentUser},
    {"HKEY_LOCAL_MACHINE", RootKey::LocalMachine},
    {"HKEY_USERS", RootKey::Users},
    {"HKEY_PERFORMANCE_DATA", RootKey::PerformanceData},
    {"HKEY_CURRENT_CONFIG", RootKey::CurrentConfig},
    {"HKEY_DYN_DATA", RootKey::DynData},
}};

/// Codes of the registry functions (winerror.h).
namespace registry_codes {
inline constexpr long Success = 0;
inline constexpr long FileNotFound = 2;
inline constexpr long AccessDenied = 5;
inline constexpr long OutOfMemory = 14;
inline constexpr long InvalidParameter = 87;
inline constexpr long MoreData = 234;
inline constexpr long BadKey = 1010;
inline constexpr long CantOpen = 1011;
inline constexpr long CantRead = 1012;
inline constexpr long CantWrite = 1013;
}  // namespace registry_codes

struct RegistryAnswer {
  long code = registry_codes::Success;
  /// A text value in UTF-8 without its terminating NUL; any other value as its bytes.
  std::string data;
};

class Registry {
 public:
  virtual ~Registry() = default;
  /// Opens the key, reads one value and closes the key.
  virtual RegistryAnswer QueryValue(RootKey root, std::string_view subKey,
                                    std::string_view name) = 0;
};

}  // namespace velkor
