// span/Locale.cpp: code pages, fonts for them, and the names of days and months.
#include "span/Locale.h"

#include <algorithm>
#include <span>

#include "values/Text.h"

namespace velkor::Locale {
namespace {

struct CodePageFont {
  CodePage page;
  int charset;
  std::string_view face;
};

// Character sets are those of wingdi.h.
constexpr std::array<CodePageFont, 12> CodePageFonts{{
    {1250, 238, ""},
    {1251, 204, ""},
    {1252, 0, ""},
    {1253, 161, ""},
    {1254, 162, ""},
    {1255, 177, ""},
    {1256, 178, ""},
    {1257, 186, ""},
    {932, 128, "ＭＳ Ｐゴシック"},
    {936, 134, "宋体"},
    {949, 129, "굴림"},
    {950, 136, "新細明體"},
}};

/// Fills entries 1 onward of a table with the names of consecutive calendar types.
void LoadRun(LocaleApi& api, LocaleId locale, std::uint32_t firstType,
             std::span<std::string> table) {
  for (std::size_t entry = 1; entry < table.size(); ++entry) {
    const auto type = static_cast<std::uint32_t>(firstType + entry - 1);
    api.EnumCalendarInfo(locale, type, [&](std::string_view name) {
      table[entry] = name;
      return false;
    });
  }
}

}  // namespace

std::string_view NullTrim(std::string_view text) {
  return text.substr(0, text.find('\0'));
}

CodePage AnsiCodePageOf(LocaleApi& api, LocaleId locale) {
  const std::string info = api.LocaleInfo(locale, locale_info::DefaultAnsiCodePage);
  return static_cast<CodePage>(ParseInteger(Trim(NullTrim(info))).value_or(0));
}

CodePage BytePage(LocaleApi& api) {
  // Code Page Identifiers: Japanese, Chinese, Korean, Chinese, Korean (Johab).
  constexpr std::array<CodePage, 5> PagesOfPairs{932, 936, 949, 950, 1361};
  const CodePage page = api.AnsiCodePage();
  const bool pairs =
      std::find(PagesOfPairs.begin(), PagesOfPairs.end(), page) != PagesOfPairs.end();
  return pairs ? code_pages::WesternEuropean : page;
}

std::string Utf8Encode(LocaleApi& api, std::string_view text) {
  return text.empty() ? std::string() : api.FromCodePage(ValidUtf8(text), BytePage(api));
}

void ApplyCodePageFont(Font& font, CodePage page) {
  constexpr double SmallestEastAsianSize = 9;
  const auto found = std::find_if(CodePageFonts.begin(), CodePageFonts.end(),
                                  [&](const CodePageFont& entry) { return entry.page == page; });
  const bool known = found != CodePageFonts.end();
  font.charset = known ? found->charset : charsets::Default;
  font.face = known ? found->face : std::string_view();
  if (!font.face.empty()) font.size = std::max(font.size, SmallestEastAsianSize);
}

CalendarNames LoadCalendarNames(LocaleApi& api, LocaleId locale) {
  CalendarNames names;
  if (locale == 0) return names;
  LoadRun(api, locale, calendar_types::FirstAbbreviatedMonthName, names.abbreviatedMonths);
  LoadRun(api, locale, calendar_types::FirstMonthName, names.months);
  LoadRun(api, locale, calendar_types::FirstDayName, names.days);
  LoadRun(api, locale, calendar_types::FirstAbbreviatedDayName, names.abbreviatedDays);
  names.days[0] = names.days[7];
  names.abbreviatedDays[0] = names.abbreviatedDays[7];
  return names;
}

}  // namespace velkor::Locale
