// platform/headless/FixedLocale.h: a locale that is the same on every machine.
#pragma once

#include <string>
#include <vector>

#include "platform/LocaleApi.h"
#include "support/DatePattern.h"
#include "values/Text.h"

namespace velkor {

/// Names that a calendar enumerates.
struct FixedNames {
  /// Monday to Sunday, January to December.
  std::vector<std::string> days, abbreviatedDays, months, abbreviatedMonths;

  static FixedNames English();
};

/// English of the United States unless told otherwise. Code page 1252 and UTF-8 (65001) are
/// converted; any other page keeps ASCII and answers '?' for the rest.
class FixedLocale : public LocaleApi {
 public:
  LocaleId locale = 0x0409;
  CodePage ansiCodePage = 1252;
  std::string decimalSign = ".";
  DatePattern dates{"M/d/y", true};
  /// Enumerated in this order.
  std::vector<FixedNames> calendars = {FixedNames::English()};

  LocaleId ThreadLocale() override { return locale; }
  std::string LocaleInfo(LocaleId, std::uint32_t kind) override;
  void EnumCalendarInfo(LocaleId, std::uint32_t calendarType,
                        const std::function<bool(std::string_view)>& name) override;
  int Compare(std::string_view a, std::string_view b) override { return CompareText(a, b); }
  CodePage AnsiCodePage() override { return ansiCodePage; }
  CodePage CachePage() override { return ansiCodePage; }
  std::string ToCodePage(std::string_view text, CodePage page) override;
  std::string FromCodePage(std::string_view bytes, CodePage page) override;
  std::string ShortDate(Date date) override { return dates.ShortDate(date); }
  std::string DateToText(Date date) override { return dates.DateToText(date); }
};

}  // namespace velkor
