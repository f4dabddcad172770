// hosts/yearplan/window/KeptSettings.cpp: settings that last at least until the program ends.
#include "hosts/yearplan/window/KeptSettings.h"

#include "platform/desktop/DesktopSystem.h"
#include "values/Error.h"

namespace velkor {

std::string KeptSettings::Get(std::string_view application, std::string_view section,
                              std::string_view key, std::string_view fallback) {
  const auto kept =
      unsaved_.find({std::string(application), std::string(section), std::string(key)});
  return kept == unsaved_.end() ? store_.Get(application, section, key, fallback) : kept->second;
}

void KeptSettings::Save(std::string_view application, std::string_view section,
                        std::string_view key, std::string_view value) {
  const Key path{application, section, key};
  try {
    store_.Save(application, section, key, value);
    unsaved_.erase(path);
  } catch (const Error& error) {
    unsaved_[path] = value;
    if (!trouble_.empty()) return;
    trouble_ = error.Description() + " (its place is named by " + ConfigurationHomeVariable() +
               "). Settings are kept in memory until the program ends.";
    onTrouble_();
  }
}

}  // namespace velkor
