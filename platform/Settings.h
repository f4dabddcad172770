// platform/Settings.h: the per-user application settings store.
#pragma once

#include <string>
#include <string_view>

namespace velkor {

/// What the product's settings are stored under, and how truth values are written.
namespace stored_settings {
inline constexpr std::string_view Application = "Year Planner";
inline constexpr std::string_view PrintingSection = "Printing";
inline constexpr std::string_view True = "True";
inline constexpr std::string_view False = "False";
}  // namespace stored_settings

/// Text values by application, section and key. A value that was saved is stored when Save
/// returns. Save throws Error when the store cannot be written.
class Settings {
 public:
  virtual ~Settings() = default;
  virtual std::string Get(std::string_view application, std::string_view section,
                          std::string_view key, std::string_view fallback) = 0;
  virtual void Save(std::string_view application, std::string_view section, std::string_view key,
                    std::string_view value) = 0;
};

}  // namespace velkor
