// calendar/set/SetText.h: a set of calendars as the JSON of its file.
#pragma once

#include <string>
#include <string_view>

#include "calendar/set/CalendarSet.h"

namespace velkor {

/// Reads a set. A calendar without an identifier gets the one that AddSource would give. Throws
/// Error (CalendarFailed) that names the file and the line or the field, as LoadSet tells.
/// @param path  of the file, absolute; paths within the text count from its folder
CalendarSet ParseSet(std::string_view bytes, const std::string& path);

/// The text for a set's file, which ParseSet reads. Files at or below the set's folder are named
/// from there, so that the whole folder can be moved. Throws Error for texts that are not UTF-8.
std::string SetText(const CalendarSet& set);

}  // namespace velkor
