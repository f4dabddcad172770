// span/Globals.cpp: the query for a span's items, and the cleaning of texts.
#include "span/Globals.h"

#include <algorithm>

#include "platform/LocaleApi.h"
#include "values/Text.h"

namespace velkor::Globals {

std::string ViewRestriction(const DisplaySpan& span, LocaleApi& locale) {
  return DaysRestriction(span.ViewStartDate(), span.ViewEndDate(), locale);
}

std::string DaysRestriction(Date first, Date last, LocaleApi& locale) {
  return "[Start] <= " + QuoteText(locale.ShortDate(last) + " 11:59 PM") + " AND [End] > " +
         QuoteText(locale.ShortDate(first) + " 12:00 AM");
}

std::string QuoteText(std::string_view text) {
  return '"' + std::string(text) + '"';
}

std::optional<std::string> FilterValue(std::string_view text) {
  if (text.find('\'') == std::string_view::npos) return '\'' + std::string(text) + '\'';
  if (text.find('"') == std::string_view::npos) return QuoteText(text);
  return std::nullopt;
}

std::string StripControlChars(std::string_view text) {
  if (Trim(text).empty()) return {};
  std::string clean(text);
  std::erase_if(clean, [](char c) { return c == '|' || static_cast<unsigned char>(c) < 32; });
  return clean;
}

}  // namespace velkor::Globals
