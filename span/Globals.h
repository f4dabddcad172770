// span/Globals.h: the query for a span's items, and the cleaning of texts.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "span/DisplaySpan.h"

namespace velkor {

class LocaleApi;

namespace Globals {

/// The filter text that selects the items of the span from a calendar folder. The dates are in
/// the user's short date format; the times are fixed English texts.
std::string ViewRestriction(const DisplaySpan& span, LocaleApi& locale);
/// The same from the first day to the last.
std::string DaysRestriction(Date first, Date last, LocaleApi& locale);

/// The text between two double quotes; quotes inside stay as they are.
std::string QuoteText(std::string_view text);

/// A text as the value of a filter's condition: between apostrophes, or between double quotes when
/// it has an apostrophe. None for a text with both, which no filter can name.
std::optional<std::string> FilterValue(std::string_view text);

/// The text without "|" and without characters 0 to 31; empty when it holds only blanks.
std::string StripControlChars(std::string_view text);

}  // namespace Globals
}  // namespace velkor
