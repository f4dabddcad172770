// platform/headless/MemorySettings.h: the settings store in memory.
#pragma once

#include <map>
#include <tuple>

#include "platform/Settings.h"
#include "values/Error.h"

namespace velkor {

class MemorySettings : public Settings {
 public:
  using Key = std::tuple<std::string, std::string, std::string>;

  /// Lets every Save fail.
  bool readOnly = false;

  std::string Get(std::string_view application, std::string_view section, std::string_view key,
                  std::string_view fallback) override {
    const auto found =
        values_.find({std::string(application), std::string(section), std::string(key)});
    return found == values_.end() ? std::string(fallback) : found->second;
  }
  void Save(std::string_view application, std::string_view section, std::string_view key,
            std::string_view value) override {
    if (readOnly) throw Error(errors::InvalidProcedureCall, "The settings cannot be written.");
    values_[{std::string(application), std::string(section), std::string(key)}] = value;
  }

  /// All values by application, section and key.
  const std::map<Key, std::string>& Values() const { return values_; }

 private:
  std::map<Key, std::string> values_;
};

}  // namespace velkor
