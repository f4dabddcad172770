// hosts/yearplan/window/StoredProperties.cpp: property values as texts of the settings, and back.
#include "hosts/yearplan/window/StoredProperties.h"

#include <limits>
#include <optional>

#include "hosts/yearplan/PropertyTexts.h"
#include "values/Text.h"

namespace velkor {
namespace {

constexpr std::string_view True = "True";
constexpr std::string_view False = "False";

std::string TextOf(const PropertyValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  if (const auto* flag = std::get_if<bool>(&value)) return std::string(*flag ? True : False);
  return std::to_string(std::get<std::int16_t>(value));
}

/// The text as a value of the same type as `like`.
std::optional<PropertyValue> ValueOf(const std::string& text, const PropertyValue& like) {
  if (std::holds_alternative<std::string>(like)) return PropertyValue(text);
  if (std::holds_alternative<bool>(like)) {
    if (SameName(text, True)) return PropertyValue(true);
    if (SameName(text, False)) return PropertyValue(false);
    return std::nullopt;
  }
  const auto number = ParseInteger(text);
  using Limits = std::numeric_limits<std::int16_t>;
  if (!number || *number < Limits::min() || *number > Limits::max()) return std::nullopt;
  return PropertyValue(static_cast<std::int16_t>(*number));
}

}  // namespace

PropertyValue StoredProperties::ReadProperty(std::string_view key, const PropertyValue& fallback) {
  const Property& property = PropertyOf(key);
  const PropertyValue first = property.ValueIn(FirstProperties());
  const std::string text = settings_.Get(SettingsName, section_, key, TextOf(first));
  const auto value = ValueOf(text, fallback);
  if (value && property.Accepts(*value)) return *value;
  report_("The stored " + std::string(key) + " \"" + text + "\" makes no sense and is not used.");
  return first;
}

void StoredProperties::WriteProperty(std::string_view key, const PropertyValue& value,
                                     const PropertyValue& /*fallback*/) {
  settings_.Save(SettingsName, section_, key, TextOf(value));
}

}  // namespace velkor
