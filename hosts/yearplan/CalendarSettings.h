// hosts/yearplan/CalendarSettings.h: the control's settings, kept for one calendar.
#pragma once

#include <string>

#include "platform/Settings.h"

namespace velkor {

/// The sections of a store, each apart for each calendar. A value that this calendar never had is
/// the one of the section without a calendar.
class CalendarSettings : public Settings {
 public:
  /// @param store     outlives this
  /// @param calendar  the file's own path
  CalendarSettings(Settings& store, const std::string& calendar)
      : store_(store), suffix_(" of " + calendar) {}

  std::string Get(std::string_view application, std::string_view section, std::string_view key,
                  std::string_view fallback) override {
    return store_.Get(application, OwnSection(section), key,
                      store_.Get(application, section, key, fallback));
  }
  void Save(std::string_view application, std::string_view section, std::string_view key,
            std::string_view value) override {
    store_.Save(application, OwnSection(section), key, value);
  }

 private:
  std::string OwnSection(std::string_view section) const { return std::string(section) + suffix_; }

  Settings& store_;
  std::string suffix_;
};

}  // namespace velkor
