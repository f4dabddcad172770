// platform/desktop/DesktopRegistry.h: registry values from a file of the user's.
#pragma once

#include "platform/Registry.h"

namespace velkor {

/// The file is a JSON object of keys, each an object of values: a text, or {"utf16": text} for a
/// binary value that holds the text in UTF-16, low byte first, without a terminating NUL:
///
///     {"HKEY_CURRENT_USER\\Control Panel\\International": {"sList": ";"},
///      "HKEY_CURRENT_USER\\Software\\Microsoft\\Office\\11.0\\Outlook\\Categories":
///          {"MasterList": {"utf16": "Holiday; Travel"}}}
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
