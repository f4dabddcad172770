// model/ColourRecord.h: how the hidden appointment that holds the category colours is known.
#pragma once

#include <string>
#include <string_view>

#include "values/Date.h"

namespace velkor::colour_record {

/// Its subject, up to the planner's title.
inline constexpr std::string_view SubjectPrefix = "PLEASE IGNORE - Velkor Category Colours: ";
/// Its subject in the calendars of older planners, whatever their title.
inline constexpr std::string_view LegacySubject =
    "Please Ignore - Holds Category Colours for the Year Planner";
/// First line of its body.
inline constexpr std::string_view Header = "--DO NOT EDIT LIST MANUALLY--";

/// The instant at which it starts and ends: a date part and a time part, added.
inline Date HiddenInstant() {
  return Date::FromFields({2011, 1, 1, 1, 30, 0});
}

inline std::string SubjectOf(std::string_view titleName) {
  return std::string(SubjectPrefix) + std::string(titleName);
}

/// True for the subject of a colour record of any title, of the older form too.
inline bool IsSubject(std::string_view subject) {
  return subject.starts_with(SubjectPrefix) || subject == LegacySubject;
}

}  // namespace velkor::colour_record
