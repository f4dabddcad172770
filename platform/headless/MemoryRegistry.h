// platform/headless/MemoryRegistry.h: registry values in memory.
#pragma once

#include <map>
#include <tuple>

#include "platform/Registry.h"

namespace velkor {

/// Values are set by the test; what was not set answers FileNotFound.
class MemoryRegistry : public Registry {
 public:
  void Set(RootKey root, std::string subKey, std::string name, RegistryAnswer answer) {
    values_[{root, std::move(subKey), std::move(name)}] = std::move(answer);
  }
  void Set(RootKey root, std::string subKey, std::string name, std::string data) {
    Set(root, std::move(subKey), std::move(name),
        RegistryAnswer{registry_codes::Success, std::move(data)});
  }

  RegistryAnswer QueryValue(RootKey root, std::string_view subKey, std::string_view name) override {
    const auto found = values_.find({root, std::string(subKey), std::string(name)});
    if (found == values_.end()) return {registry_codes::FileNotFound, {}};
    return found->second;
  }

 private:
  std::map<std::tuple<RootKey, std::string, std::string>, RegistryAnswer> values_;
};

}  // namespace velkor
