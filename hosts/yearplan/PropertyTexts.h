// hosts/yearplan/PropertyTexts.h: says what this program calls the properties of its planners.
#pragma once

#include <array>

#include "control/PropertyTable.h"

namespace velkor {

/// What a calendar starts with that nobody has set anything for.
inline PlannerProperties FirstProperties() {
  return {.AllEvents = true, .DisplaySubject = true};
}

/// How people set one property, beside its caption.
struct PropertyTexts {
  Property::Member member;
  /// Below the field in the settings dialog, what it is for; null for nothing.
  const char* note;
  /// The option of the command line, which turns a truth value round; null for none.
  const char* option;
  const char* help;
  /// What the option takes; null where it stands alone.
  const char* valueName;
};

/// In the order in which people see them. Appointments of calendar files are all of one message
/// class, so that of the control stays as it is.
inline constexpr std::array<PropertyTexts, 6> PropertyTextTable{{
    {&PlannerProperties::FirstMonth, nullptr, "first-month",
     "The month in the first row, 1 to 12 (1).", "month"},
    {&PlannerProperties::AllEvents, nullptr, "no-all-events",
     "Leave out what has no whole day, as the control does by default.", nullptr},
    {&PlannerProperties::DisplaySubject, nullptr, "no-subjects", "Draw bars without subjects.",
     nullptr},
    {&PlannerProperties::HideNonCategoryItems, nullptr, "hide-non-category",
     "Hide events that name no category of the legend.", nullptr},
    {&PlannerProperties::TitleName, "Planners with the same title share their colours.", "title",
     "The planner's title, which names its category colours (Default).", "name"},
    {&PlannerProperties::Folder,
     "A folder of the calendar, as in Team\\Holidays; leave it empty for the whole file.", nullptr,
     nullptr, nullptr},
}};

}  // namespace velkor
