// platform/LocaleApi.h: the user's locale, code pages and calendar names.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "values/Date.h"

namespace velkor {

/// A locale identifier as Windows counts them (0x0409 is English of the United States).
using LocaleId = std::uint32_t;
using CodePage = std::uint32_t;

/// Kinds of locale information (winnls.h).
namespace locale_info {
/// What stands before the decimals of a number.
inline constexpr std::uint32_t DecimalSign = 0x0E;
/// Format of the short date, as "dd.MM.yy".
inline constexpr std::uint32_t ShortDate = 0x1F;
/// Format of times; it has a "t" where half days are told apart.
inline constexpr std::uint32_t TimeFormat = 0x1003;
/// Order of the short date: "0" month first, "1" day first, "2" year first.
inline constexpr std::uint32_t ShortDateOrder = 0x21;
/// Number of the ANSI code page, as text.
inline constexpr std::uint32_t DefaultAnsiCodePage = 0x1004;
}  // namespace locale_info

/// Calendar types (winnls.h) of the first name of each kind; the others follow in their order.
namespace calendar_types {
/// Monday to Sunday.
inline constexpr std::uint32_t FirstDayName = 7;
inline constexpr std::uint32_t FirstAbbreviatedDayName = 14;
/// January to December, then a 13th month where the calendar has one.
inline constexpr std::uint32_t FirstMonthName = 21;
inline constexpr std::uint32_t FirstAbbreviatedMonthName = 34;
}  // namespace calendar_types

/// Code pages by what they are (winnls.h).
namespace code_pages {
inline constexpr CodePage WesternEuropean = 1252;
inline constexpr CodePage Utf8 = 65001;
}  // namespace code_pages

class LocaleApi {
 public:
  virtual ~LocaleApi() = default;

  /// Identifier of the calling thread's locale; 0 when there is none.
  virtual LocaleId ThreadLocale() = 0;
  /// One piece of locale information as GetLocaleInfo gives it, padded with NUL characters or
  /// not; empty for an unknown kind.
  virtual std::string LocaleInfo(LocaleId locale, std::uint32_t kind) = 0;
  /// Calls `name` with the calendar name of this type (see calendar_types) for every
  /// calendar of the locale, the locale's own calendar first, until it returns false.
  virtual void EnumCalendarInfo(LocaleId locale, std::uint32_t calendarType,
                                const std::function<bool(std::string_view)>& name) = 0;

  /// Below, at or above 0 as `a` stands before, with or after `b` in the lists of the user's
  /// language.
  virtual int Compare(std::string_view a, std::string_view b) = 0;

  /// The system's ANSI code page; UTF-8 off Windows. An ASCII text is the same bytes in each (Code
  /// Page Identifiers).
  virtual CodePage AnsiCodePage() = 0;
  /// The code page of cache files, whoever writes them on this system.
  virtual CodePage CachePage() = 0;
  /// UTF-8 to the bytes of a code page; a character that it lacks becomes '?'. A page's undefined
  /// bytes stand for the control characters of the same code, both ways.
  virtual std::string ToCodePage(std::string_view text, CodePage page) = 0;
  virtual std::string FromCodePage(std::string_view bytes, CodePage page) = 0;

  /// The date in the user's short date format, four-digit year, without time ("ddddd").
  virtual std::string ShortDate(Date date) = 0;
  /// The platform's default conversion of a date to text: short date, then a blank and the time
  /// to the second unless it is midnight.
  virtual std::string DateToText(Date date) = 0;
};

}  // namespace velkor
