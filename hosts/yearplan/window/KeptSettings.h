// hosts/yearplan/window/KeptSettings.h: settings that last at least until the program ends.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <tuple>

#include "platform/Settings.h"

namespace velkor {

/// Another store, and in memory what that one did not take: Save throws nothing.
class KeptSettings : public Settings {
 public:
  /// @param store      outlives this
  /// @param onTrouble  called when the store takes nothing for the first time
  KeptSettings(Settings& store, std::function<void()> onTrouble)
      : store_(store), onTrouble_(std::move(onTrouble)) {}

  std::string Get(std::string_view application, std::string_view section, std::string_view key,
                  std::string_view fallback) override;
  void Save(std::string_view application, std::string_view section, std::string_view key,
            std::string_view value) override;

  /// Why settings do not outlast the program, and which variable names their place; empty while all
  /// were stored.
  const std::string& Trouble() const { return trouble_; }

 private:
  using Key = std::tuple<std::string, std::string, std::string>;

  Settings& store_;
  std::function<void()> onTrouble_;
  std::map<Key, std::string> unsaved_;
  std::string trouble_;
};

}  // namespace velkor
