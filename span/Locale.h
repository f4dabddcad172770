// span/Locale.h: code pages, fonts for them, and the names of days and months.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "platform/LocaleApi.h"
#include "values/Font.h"

namespace velkor {

/// Names in the user's language. Months 1 to 12. Days 1 (Monday) to 7 (Sunday), entry 0 repeating
/// Sunday, so that a weekday counted from Sunday = 0 finds its name too.
struct CalendarNames {
  std::array<std::string, 13> months;
  std::array<std::string, 13> abbreviatedMonths;
  std::array<std::string, 8> days;
  std::array<std::string, 8> abbreviatedDays;
};

namespace Locale {

/// The text up to its first NUL character.
std::string_view NullTrim(std::string_view text);

/// The ANSI code page of a locale; 0 when the system names none.
CodePage AnsiCodePageOf(LocaleApi& api, LocaleId locale);

/// The code page in which a text of byte values is written: the system's ANSI code page, or 1252
/// where that takes two bytes for some characters, so that not every sequence of bytes is a text.
CodePage BytePage(LocaleApi& api);

/// A text that, written in BytePage, is the given text in UTF-8: one character for each UTF-8 byte,
/// or the text itself where that page is UTF-8.
std::string Utf8Encode(LocaleApi& api, std::string_view text);

/// Sets the font's character set for a code page and, for the East Asian ones, a face and at least
/// 9 points; for the others the face is left to the platform.
void ApplyCodePageFont(Font& font, CodePage page);

/// Reads all names of a locale; empty tables for locale 0. Where a locale has several calendars
/// its own calendar's names stand.
CalendarNames LoadCalendarNames(LocaleApi& api, LocaleId locale);

}  // namespace Locale
}  // namespace velkor
