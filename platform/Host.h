// platform/Host.h: the program that a control is placed in, and its bag of properties.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace velkor {

class Error;

using PropertyValue = std::variant<std::string, bool, std::int16_t>;

/// The host's storage of one control's persisted properties.
class PropertyBag {
 public:
  virtual ~PropertyBag() = default;
  /// The stored value, of the same type as `fallback`; the fallback when nothing is stored. Throws
  /// Error (TypeMismatch) for a stored value that is no such type.
  virtual PropertyValue ReadProperty(std::string_view key, const PropertyValue& fallback) = 0;
  /// Stores a value; one equal to `fallback` need not be kept.
  virtual void WriteProperty(std::string_view key, const PropertyValue& value,
                             const PropertyValue& fallback) = 0;
};

/// What a control tells its host.
class ControlHost {
 public:
  virtual ~ControlHost() = default;
  /// A property was written; its value has to be saved some time.
  virtual void PropertyChanged(std::string_view key) = 0;
  /// Progress of the synchronisation; an empty text clears the last one.
  virtual void StatusChange(std::string_view Msg) = 0;
};

}  // namespace velkor
