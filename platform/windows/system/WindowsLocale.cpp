// platform/windows/system/WindowsLocale.cpp: locale information, calendar names and code pages.
#include "platform/windows/system/WindowsLocale.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "platform/windows/system/AnsiText.h"
#include "platform/windows/system/Wide.h"
#include "platform/windows/system/Win32.h"
#include "values/Text.h"

namespace velkor {
namespace {

std::string AnsiInfo(LCID locale, LCTYPE kind) {
  char text[256];
  const int length = ::GetLocaleInfoA(locale, kind, text, static_cast<int>(std::size(text)));
  return length > 0 ? std::string(text, static_cast<std::size_t>(length - 1)) : std::string();
}

std::string WideInfo(LCID locale, LCTYPE kind) {
  wchar_t text[128];
  const int length = ::GetLocaleInfoW(locale, kind, text, static_cast<int>(std::size(text)));
  return length > 0 ? ToUtf8({text, static_cast<std::size_t>(length - 1)}) : std::string();
}

/// The code page in which the ANSI functions answer about a locale ("GetLocaleInfoA"); 0 for one
/// that has none.
CodePage PageOf(LCID locale) {
  const std::string number = AnsiInfo(locale, LOCALE_IDEFAULTANSICODEPAGE);
  CodePage page = 0;
  std::from_chars(number.data(), number.data() + number.size(), page);
  return page;
}

/// Characters beyond the basic plane as one '?' each, since no ANSI page has them and the system
/// would count their two halves.
std::wstring WithinBasicPlane(std::string_view text) {
  std::wstring wide;
  while (!text.empty()) {
    const char32_t character = TakeCharacter(text);
    wide.push_back(character < 0x10000 ? static_cast<wchar_t>(character) : L'?');
  }
  return wide;
}

/// EnumCalendarInfoA hands its callback nothing of the caller's: names go through here, of one
/// enumeration at a time.
SRWLOCK enumerating = SRWLOCK_INIT;
std::vector<std::string>* enumerated = nullptr;

BOOL CALLBACK TakeAnsiName(LPSTR name) {
  enumerated->emplace_back(name);
  return TRUE;
}

std::vector<std::string> AnsiNames(LCID locale, CALTYPE type) {
  std::vector<std::string> names;
  ::AcquireSRWLockExclusive(&enumerating);
  enumerated = &names;
  ::EnumCalendarInfoA(TakeAnsiName, locale, ENUM_ALL_CALENDARS, type);
  enumerated = nullptr;
  ::ReleaseSRWLockExclusive(&enumerating);
  return names;
}

BOOL CALLBACK TakeWideName(LPWSTR name, CALID, LPWSTR, LPARAM names) {
  reinterpret_cast<std::vector<std::string>*>(names)->push_back(ToUtf8(name));
  return TRUE;
}

std::vector<std::string> WideNames(LCID locale, CALTYPE type) {
  std::vector<std::string> names;
  wchar_t localeName[LOCALE_NAME_MAX_LENGTH];
  if (::LCIDToLocaleName(locale, localeName, LOCALE_NAME_MAX_LENGTH, 0) == 0) return names;
  ::EnumCalendarInfoExEx(TakeWideName, localeName, ENUM_ALL_CALENDARS, nullptr, type,
                         reinterpret_cast<LPARAM>(&names));
  return names;
}

}  // namespace

WindowsLocale::WindowsLocale()
    : pattern_(LocaleInfo(::GetThreadLocale(), LOCALE_SSHORTDATE),
               LocaleInfo(::GetThreadLocale(), LOCALE_STIMEFORMAT).find('t') != std::string::npos) {
}

LocaleId WindowsLocale::ThreadLocale() {
  return ::GetThreadLocale();
}

// The ANSI functions put similar letters, and at last question marks, in place of those that the
// locale's code page lacks, and do not tell. Such answers are the other functions'.

std::string WindowsLocale::LocaleInfo(LocaleId locale, std::uint32_t kind) {
  const CodePage page = PageOf(locale);
  const std::string whole = WideInfo(locale, kind);
  return WholeInCodePage(whole, page) ? FromCodePage(AnsiInfo(locale, kind), page) : whole;
}

void WindowsLocale::EnumCalendarInfo(LocaleId locale, std::uint32_t calendarType,
                                     const std::function<bool(std::string_view)>& name) {
  const CodePage page = PageOf(locale);
  std::vector<std::string> names = WideNames(locale, calendarType);
  const bool inPage = std::all_of(names.begin(), names.end(), [page](const std::string& each) {
    return WholeInCodePage(each, page).has_value();
  });
  if (inPage) {
    names = AnsiNames(locale, calendarType);
    for (std::string& each : names) each = FromCodePage(each, page);
  }
  for (const std::string& each : names) {
    if (!name(each)) return;
  }
}

int WindowsLocale::Compare(std::string_view a, std::string_view b) {
  const std::wstring first = ToWide(a);
  const std::wstring second = ToWide(b);
  // It answers 1, 2 or 3, and 0 for a failure (CompareStringW function).
  const int answer =
      ::CompareStringW(::GetThreadLocale(), 0, first.c_str(), static_cast<int>(first.size()),
                       second.c_str(), static_cast<int>(second.size()));
  return answer == 0 ? first.compare(second) : answer - CSTR_EQUAL;
}

CodePage WindowsLocale::AnsiCodePage() {
  return ::GetACP();
}

std::string WindowsLocale::ToCodePage(std::string_view text, CodePage page) {
  if (page == code_pages::Utf8) return ValidUtf8(text);
  const std::wstring wide = WithinBasicPlane(text);
  std::string bytes(wide.size() * 4, '\0');
  const auto convert = [&](DWORD flags, const char* lacking) {
    return ::WideCharToMultiByte(page, flags, wide.c_str(), static_cast<int>(wide.size()),
                                 bytes.data(), static_cast<int>(bytes.size()), lacking, nullptr);
  };
  int length = convert(WC_NO_BEST_FIT_CHARS, "?");
  // Stateful pages take neither the flag nor a character of the caller's.
  if (length == 0) length = convert(0, nullptr);
  bytes.resize(static_cast<std::size_t>(length));
  return bytes;
}

std::string WindowsLocale::FromCodePage(std::string_view bytes, CodePage page) {
  if (page == code_pages::Utf8) return ValidUtf8(bytes);
  std::wstring wide(bytes.size(), L'\0');
  const int length = ::MultiByteToWideChar(page, 0, bytes.data(), static_cast<int>(bytes.size()),
                                           wide.data(), static_cast<int>(wide.size()));
  return ToUtf8({wide.data(), static_cast<std::size_t>(length)});
}

}  // namespace velkor
