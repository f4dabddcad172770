// platform/desktop/DesktopRegistry.h: registry values from a file of the user's.
#pragma once

#include "platform/Registry.h"

namespace velkor {

/// The file is a JSON object of keys, each an object of text values:
///
///     {"HKEY_CURRENT_USER\\Control Panel\\International": {"sList": ";"}}
///
/// A file that is absent has no values; one that is no such object answers CantRead.
class DesktopRegistry : public Registry {
 public:
  /// `path` empty: "registry.json" under the user's configuration home.
  explicit DesktopRegistry(std::string path = {});

  RegistryAnswer QueryValue(RootKey root, std::string_view subKey, std::string_view name) override;

 private:
  std::string path_;
};

}  // namespace velkor
