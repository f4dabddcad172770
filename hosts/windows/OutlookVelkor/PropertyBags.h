// hosts/windows/OutlookVelkor/PropertyBags.h: the containers' ways to keep the control's
// properties.
#pragma once

#include <map>
#include <string>

#include "platform/Host.h"
#include "platform/windows/com/ComObject.h"

namespace velkor {

/// Over a container's bag. A value of another type is converted as automation converts.
class ComPropertyBag : public PropertyBag {
 public:
  /// @param log  hears of values that cannot be read; may be null
  /// @param keepAll  also writes values that equal their fallback
  ComPropertyBag(IPropertyBag& bag, IErrorLog* log, bool keepAll)
      : bag_(bag), log_(log), keepAll_(keepAll) {}

  PropertyValue ReadProperty(std::string_view key, const PropertyValue& fallback) override;
  void WriteProperty(std::string_view key, const PropertyValue& value,
                     const PropertyValue& fallback) override;

 private:
  IPropertyBag& bag_;
  IErrorLog* log_;
  bool keepAll_;
};

/// In memory, from and to the bytes of a stream.
class MemoryBag : public PropertyBag {
 public:
  /// A bag as Save writes it: a mark, the number of properties, and of each key and value as text.
  /// Throws Error (InputPastEnd, BadFileMode) for bytes that are no such bag.
  void Load(IStream& stream);
  void Save(IStream& stream) const;
  /// Bytes that Save writes.
  std::size_t Size() const;

  PropertyValue ReadProperty(std::string_view key, const PropertyValue& fallback) override;
  void WriteProperty(std::string_view key, const PropertyValue& value,
                     const PropertyValue& fallback) override;

 private:
  std::map<std::string, std::string, std::less<>> texts_;
};

}  // namespace velkor
