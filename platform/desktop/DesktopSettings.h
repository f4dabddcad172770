// platform/desktop/DesktopSettings.h: the settings store as an INI file.
#pragma once

#include "platform/Settings.h"

namespace velkor {

/// Processes may share the file: each Save locks it, merges its key in and replaces the file whole.
/// The file is for its owner alone, and so is a folder that is made for it.
class DesktopSettings : public Settings {
 public:
  /// `path` empty: "settings.ini" under the user's configuration home.
  explicit DesktopSettings(std::string path = {});

  std::string Get(std::string_view application, std::string_view section, std::string_view key,
                  std::string_view fallback) override;
  void Save(std::string_view application, std::string_view section, std::string_view key,
            std::string_view value) override;

 private:
  std::string path_;
};

}  // namespace velkor
