// control/PropertyTable.h: lists the control's properties: key, value, default, and what follows.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <variant>

#include "model/ColourRecord.h"
#include "model/PlannerProperties.h"
#include "platform/Host.h"

namespace velkor {

/// What a property that was written needs before it can be seen.
enum class PropertyNeed {
  /// It is read whenever it counts.
  Nothing,
  /// The next drawing lays the year out anew.
  Layout,
};

/// One property of the control.
struct Property {
  /// Its types are those of PropertyValue, in the same order.
  using Member = std::variant<std::string PlannerProperties::*, bool PlannerProperties::*,
                              std::int16_t PlannerProperties::*>;

  /// Under which it is persisted and told of.
  std::string_view key;
  /// What people read beside its field, its mnemonic marked.
  const char* caption;
  Member member;
  PropertyNeed need = PropertyNeed::Nothing;
  /// The longest text that it takes, in UTF-16; counts for texts alone.
  std::size_t longest = 0;

  PropertyValue ValueIn(const PlannerProperties& properties) const;
  PropertyValue Default() const { return ValueIn({}); }
  /// Whether a value has the property's type; a number is a month, a text no longer than `longest`.
  bool Accepts(const PropertyValue& value) const;
  /// Throws Error (TypeMismatch, InvalidProcedureCall) for a value that is not accepted.
  void Set(PlannerProperties& properties, const PropertyValue& value) const;
};

/// What the places hold in which the texts end up, in UTF-16: the longest path that a system has;
/// the subject of a colour record ("PidTagSubject Canonical Property"), which is full before the
/// name of a settings section is; a message class ("PidTagMessageClass Canonical Property").
namespace longest_text {
inline constexpr std::size_t Folder = 32'767;
inline constexpr std::size_t TitleName = 255 - colour_record::SubjectPrefix.size();
inline constexpr std::size_t AppointmentForm = 255;
}  // namespace longest_text

/// In the order in which they are read and written.
inline constexpr std::array<Property, 7> PropertyTable{{
    {"Folder", "&Folder:", &PlannerProperties::Folder, PropertyNeed::Nothing, longest_text::Folder},
    {"AllEvents", "Show appointments &within one day, too", &PlannerProperties::AllEvents,
     PropertyNeed::Layout},
    {"DisplaySubject", "Write &subjects into the bars", &PlannerProperties::DisplaySubject},
    {"TitleName", "&Title:", &PlannerProperties::TitleName, PropertyNeed::Nothing,
     longest_text::TitleName},
    {"HideNonCategoryItems", "&Hide appointments without a known category",
     &PlannerProperties::HideNonCategoryItems},
    {"AppointmentForm", "&Appointment form:", &PlannerProperties::AppointmentForm,
     PropertyNeed::Nothing, longest_text::AppointmentForm},
    {"StartMonth", "First &month:", &PlannerProperties::FirstMonth},
}};

const Property& PropertyOf(Property::Member member);
/// Throws Error (InvalidProcedureCall) for a key that no property has.
const Property& PropertyOf(std::string_view key);

}  // namespace velkor
