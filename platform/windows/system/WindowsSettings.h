// platform/windows/system/WindowsSettings.h: the per-user settings store in the registry.
#pragma once

#include "platform/Settings.h"

namespace velkor {

/// Text values below HKEY_CURRENT_USER\Software\VB and VBA Program Settings\APPLICATION\SECTION,
/// the place that the GetSetting and SaveSetting functions document.
class WindowsSettings : public Settings {
 public:
  std::string Get(std::string_view application, std::string_view section, std::string_view key,
                  std::string_view fallback) override;
  void Save(std::string_view application, std::string_view section, std::string_view key,
            std::string_view value) override;
};

}  // namespace velkor
