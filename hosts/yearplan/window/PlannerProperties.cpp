// hosts/yearplan/window/PlannerProperties.cpp: property values as texts of the settings, and back.
#include "hosts/yearplan/window/PlannerProperties.h"

#include <optional>

#include "control/YearPlan.h"
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
  // The one number among the properties is a month.
  const auto number = ParseInteger(text);
  if (!number || *number < 1 || *number > 12) return std::nullopt;
  return PropertyValue(static_cast<std::int16_t>(*number));
}

/// What a calendar that is opened for the first time starts with.
PropertyValue FirstValue(std::string_view key, const PropertyValue& fallback) {
  return key == "AllEvents" || key == "DisplaySubject" ? PropertyValue(true) : fallback;
}

}  // namespace

PlannerProperties PropertiesOf(const YearPlan& plan) {
  return {plan.Folder(),         plan.AllEvents(), plan.HideNonCategoryItems(),
          plan.DisplaySubject(), plan.TitleName(), plan.FirstMonth()};
}

void SetProperties(YearPlan& plan, const PlannerProperties& properties) {
  const PlannerProperties now = PropertiesOf(plan);
  if (properties.Folder != now.Folder) plan.SetFolder(properties.Folder);
  if (properties.AllEvents != now.AllEvents) plan.SetAllEvents(properties.AllEvents);
  if (properties.HideNonCategoryItems != now.HideNonCategoryItems) {
    plan.SetHideNonCategoryItems(properties.HideNonCategoryItems);
  }
  if (properties.DisplaySubject != now.DisplaySubject) {
    plan.SetDisplaySubject(properties.DisplaySubject);
  }
  if (properties.TitleName != now.TitleName) plan.SetTitleName(properties.TitleName);
  if (properties.FirstMonth != now.FirstMonth) plan.SetFirstMonth(properties.FirstMonth);
}

PropertyValue StoredProperties::ReadProperty(std::string_view key, const PropertyValue& fallback) {
  const PropertyValue first = FirstValue(key, fallback);
  const std::string text = settings_.Get(SettingsName, section_, key, TextOf(first));
  if (const auto value = ValueOf(text, fallback)) return *value;
  report_("The stored " + std::string(key) + " \"" + text + "\" makes no sense and is not used.");
  return first;
}

void StoredProperties::WriteProperty(std::string_view key, const PropertyValue& value,
                                     const PropertyValue& /*fallback*/) {
  settings_.Save(SettingsName, section_, key, TextOf(value));
}

}  // namespace velkor
