// calendar/ics/write/IcsText.h: values as iCalendar text, the counterpart of IcsValues.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/ics/read/IcsScanner.h"
#include "calendar/ics/read/IcsZones.h"

namespace velkor {

/// A TEXT value: escaped, line breaks (CR LF) as \n.
/// @param text  UTF-8
std::string TextValue(std::string_view text);
std::string TextListValue(const std::vector<std::string>& texts);
/// 20260131, 20260131T093000 or 20260131T093000Z.
std::string DateValue(WallSeconds wall);
std::string TimeValue(WallSeconds wall, bool isUtc);
/// P2D or PT26H30M; not below 0.
std::string DurationValue(std::int64_t seconds, bool wholeDays);

/// A reminder as it is added to an event: a quarter of an hour before.
inline constexpr std::array<std::string_view, 5> ReminderLines{
    "BEGIN:VALARM", "ACTION:DISPLAY", "DESCRIPTION:Reminder", "TRIGGER:-PT15M", "END:VALARM"};

/// The text in the encoding of a file; in UTF-8 when it would not be read back from that one, as a
/// character that Windows-1252 lacks.
std::string EncodeText(std::string_view text, IcsEncoding encoding);

/// One content line, folded so that no physical line is longer than 75 bytes and no character is
/// split, each of them with this line end.
/// @param line  in the file's encoding
std::string FoldLine(std::string_view line, std::string_view lineEnd);

}  // namespace velkor
