// platform/headless/ScriptedHost.h: a host that writes down what it is told, and its property bag.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/Host.h"
#include "values/Error.h"

namespace velkor {

class ScriptedHost : public ControlHost {
 public:
  std::vector<std::string> changed;
  std::vector<std::string> statuses;

  void PropertyChanged(std::string_view key) override { changed.emplace_back(key); }
  void StatusChange(std::string_view Msg) override { statuses.emplace_back(Msg); }
};

class MemoryPropertyBag : public PropertyBag {
 public:
  std::map<std::string, PropertyValue, std::less<>> values;
  /// Keys in the order in which they were read and written.
  std::vector<std::string> read;
  std::vector<std::string> written;

  PropertyValue ReadProperty(std::string_view key, const PropertyValue& fallback) override {
    read.emplace_back(key);
    const auto found = values.find(key);
    if (found == values.end()) return fallback;
    if (found->second.index() != fallback.index()) {
      throw Error(errors::TypeMismatch, "The property " + std::string(key) + " has another type.");
    }
    return found->second;
  }
  void WriteProperty(std::string_view key, const PropertyValue& value,
                     const PropertyValue& /*fallback*/) override {
    written.emplace_back(key);
    values.insert_or_assign(std::string(key), value);
  }
};

}  // namespace velkor
