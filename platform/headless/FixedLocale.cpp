// platform/headless/FixedLocale.cpp: English names, and code pages.
#include "platform/headless/FixedLocale.h"

#include "support/CodePage1252.h"
#include "values/Text.h"

namespace velkor {
namespace {

std::string OnlyAscii(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const char32_t character = TakeCharacter(text);
    result.push_back(character < 0x80 ? static_cast<char>(character) : '?');
  }
  return result;
}

/// The name that a calendar type asks for; null for any other type.
const std::string* NameOf(const FixedNames& names, std::uint32_t type) {
  using namespace calendar_types;
  struct Run {
    const std::vector<std::string>& names;
    std::uint32_t first;
  };
  for (const Run& run :
       {Run{names.days, FirstDayName}, Run{names.abbreviatedDays, FirstAbbreviatedDayName},
        Run{names.months, FirstMonthName},
        Run{names.abbreviatedMonths, FirstAbbreviatedMonthName}}) {
    if (type >= run.first && type - run.first < run.names.size()) {
      return &run.names[type - run.first];
    }
  }
  return nullptr;
}

}  // namespace

FixedNames FixedNames::English() {
  FixedNames names{{"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"},
                   {},
                   {"January", "February", "March", "April", "May", "June", "July", "August",
                    "September", "October", "November", "December"},
                   {}};
  for (const std::string& day : names.days) names.abbreviatedDays.push_back(day.substr(0, 3));
  for (const std::string& month : names.months) {
    names.abbreviatedMonths.push_back(month.substr(0, 3));
  }
  return names;
}

std::string FixedLocale::LocaleInfo(LocaleId, std::uint32_t kind) {
  // Padded as the system pads its buffer, so that callers prove to cut at the first NUL.
  if (kind == locale_info::DefaultAnsiCodePage) {
    return std::to_string(ansiCodePage) + std::string(4, '\0');
  }
  if (kind == locale_info::ShortDateOrder)
    return std::to_string(static_cast<int>(dates.FieldOrder())) + '\0';
  if (kind == locale_info::DecimalSign) return decimalSign + '\0';
  return {};
}

void FixedLocale::EnumCalendarInfo(LocaleId, std::uint32_t calendarType,
                                   const std::function<bool(std::string_view)>& name) {
  for (const FixedNames& names : calendars) {
    const std::string* const found = NameOf(names, calendarType);
    if (found != nullptr && !name(*found)) return;
  }
}

std::string FixedLocale::ToCodePage(std::string_view text, CodePage page) {
  if (page == code_pages::Utf8) return ValidUtf8(text);
  return page == code_pages::WesternEuropean ? ToCodePage1252(text) : OnlyAscii(text);
}

std::string FixedLocale::FromCodePage(std::string_view bytes, CodePage page) {
  if (page == code_pages::Utf8) return ValidUtf8(bytes);
  return page == code_pages::WesternEuropean ? FromCodePage1252(bytes) : OnlyAscii(bytes);
}

}  // namespace velkor
