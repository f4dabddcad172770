// hosts/yearplan/window/StoredProperties.h: keeps the properties of a planner for each calendar.
#pragma once

#include <functional>
#include <string>

#include "platform/Host.h"
#include "platform/Settings.h"

namespace velkor {

/// The properties of one calendar in the user's settings. A new calendar starts as FirstProperties
/// says. A stored value that makes no sense counts as none: it is reported, and the planner opens
/// all the same. WriteProperty throws what the settings throw.
class StoredProperties : public PropertyBag {
 public:
  /// @param calendar  the file's own path
  /// @param report    takes a sentence about each value that was passed over
  StoredProperties(Settings& settings, const std::string& calendar,
                   std::function<void(const std::string&)> report)
      : settings_(settings), section_("Calendar " + calendar), report_(std::move(report)) {}

  PropertyValue ReadProperty(std::string_view key, const PropertyValue& fallback) override;
  void WriteProperty(std::string_view key, const PropertyValue& value,
                     const PropertyValue& fallback) override;

 private:
  Settings& settings_;
  std::string section_;
  std::function<void(const std::string&)> report_;
};

/// The name of this program in the user's settings.
inline constexpr std::string_view SettingsName = "yearplan";

}  // namespace velkor
