// control/PropertyTable.cpp: reads, checks and writes one property.
#include "control/PropertyTable.h"

#include <algorithm>
#include <type_traits>

#include "values/Error.h"

namespace velkor {
namespace {

bool IsMonth(std::int16_t number) {
  return number >= 1 && number <= 12;
}

}  // namespace

PropertyValue Property::ValueIn(const PlannerProperties& properties) const {
  return std::visit([&](auto each) { return PropertyValue(properties.*each); }, member);
}

bool Property::Accepts(const PropertyValue& value) const {
  const auto* const number = std::get_if<std::int16_t>(&value);
  return value.index() == member.index() && (number == nullptr || IsMonth(*number));
}

void Property::Set(PlannerProperties& properties, const PropertyValue& value) const {
  if (value.index() != member.index()) {
    throw Error(errors::TypeMismatch, "The property " + std::string(key) + " has another type.",
                "YearPlan");
  }
  if (!Accepts(value)) {
    throw Error(errors::InvalidProcedureCall,
                std::string(key) + " is " + std::to_string(std::get<std::int16_t>(value)) +
                    "; months are 1 to 12.",
                "YearPlan");
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
  throw Error(errors::InvalidProcedureCall, "There is no property " + std::string(key) + ".",
              "YearPlan");
}

}  // namespace velkor
