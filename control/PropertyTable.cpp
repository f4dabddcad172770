// control/PropertyTable.cpp: reads, checks and writes one property.
#include "control/PropertyTable.h"

#include <algorithm>
#include <type_traits>

#include "values/Error.h"
#include "values/Text.h"

namespace velkor {
namespace {

bool IsMonth(std::int16_t number) {
  return number >= 1 && number <= 12;
}

[[noreturn]] void Refuse(long number, const std::string& why) {
  throw Error(number, why, "YearPlan");
}

}  // namespace

PropertyValue Property::ValueIn(const PlannerProperties& properties) const {
  return std::visit([&](auto each) { return PropertyValue(properties.*each); }, member);
}

bool Property::Accepts(const PropertyValue& value) const {
  if (value.index() != member.index()) return false;
  if (const auto* const number = std::get_if<std::int16_t>(&value)) return IsMonth(*number);
  const auto* const text = std::get_if<std::string>(&value);
  return text == nullptr || Utf16Length(*text) <= longest;
}

void Property::Set(PlannerProperties& properties, const PropertyValue& value) const {
  const std::string name(key);
  if (value.index() != member.index()) {
    Refuse(errors::TypeMismatch, "The property " + name + " has another type.");
  }
  if (!Accepts(value)) {
    const auto* const text = std::get_if<std::string>(&value);
    Refuse(errors::InvalidProcedureCall,
           text ? name + " has " + std::to_string(Utf16Length(*text)) + " characters; " +
                      std::to_string(longest) + " are the most."
                : name + " is " + std::to_string(std::get<std::int16_t>(value)) +
                      "; months are 1 to 12.");
  }
  const auto set = [&](auto each) {
    using Value = std::remove_cvref_t<decltype(properties.*each)>;
    properties.*each = std::get<Value>(value);
  };
  std::visit(set, member);
}

const Property& PropertyOf(Property::Member member) {
  return *std::find_if(PropertyTable.begin(), PropertyTable.end(),
                       [&](const Property& property) { return property.member == member; });
}

const Property& PropertyOf(std::string_view key) {
  const auto found = std::find_if(PropertyTable.begin(), PropertyTable.end(),
                                  [&](const Property& property) { return property.key == key; });
  if (found != PropertyTable.end()) return *found;
  Refuse(errors::InvalidProcedureCall, "There is no property " + std::string(key) + ".");
}

}  // namespace velkor
