// calendar/ics/read/IcsAnswer.h: how the reading process tells its parent what a calendar holds.
#pragma once

#include <string>
#include <string_view>

#include "calendar/ics/read/IcsParser.h"
#include "values/Error.h"

namespace velkor {

/// The calendar, or why there is none, as one block of bytes that states its own length.
std::string EncodeAnswer(const ParsedCalendar& calendar);
std::string EncodeAnswer(const Error& error);

/// Throws the Error that the block holds. Throws Error (CalendarFailed, source "Answer") for bytes
/// that are no whole block; whatever they are, no other harm is done.
ParsedCalendar DecodeAnswer(std::string_view bytes);

/// Takes the first of several blocks off the front. Throws as DecodeAnswer does for bytes that
/// begin with none.
std::string_view TakeAnswer(std::string_view& bytes);

}  // namespace velkor
