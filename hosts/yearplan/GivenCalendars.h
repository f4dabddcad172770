// hosts/yearplan/GivenCalendars.h: what is opened for the calendars that a command line names.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "calendar/set/CalendarSet.h"

namespace velkor {

/// webcal, webcals, http or https, in letters of any case.
bool IsCalendarAddress(std::string_view word);

/// One calendar that is named: a file, or an address, which is a calendar of the account where one
/// is given (webcal stays an address that anybody may read).
SetSource SourceOfWord(const std::string& word, const std::string& account);

/// The only word, when it is a file or a set; else the set of all of them that nobody has saved,
/// with the calendars of sets in their place. Throws Error as SetOf and LoadSet do.
std::string CalendarOf(const std::vector<std::string>& words, const std::string& account);

/// Throws Error when an output would take the place of a calendar file or set, or of a calendar in
/// the set.
void RefuseCalendarAsOutput(const std::string& calendar, const std::string& output);

}  // namespace velkor
