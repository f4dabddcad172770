// platform/windows/WindowsLocale.cpp: locale information, calendar names and code pages.
#include "platform/windows/WindowsLocale.h"

#include <algorithm>

#include "platform/windows/Wide.h"
#include "platform/windows/Win32.h"
#include "support/CodePage1252.h"
#include "support/values/Text.h"

namespace velkor {
namespace {

std::string Info(LCID locale, LCTYPE kind) {
  wchar_t text[128];
  const int length = ::GetLocaleInfoW(locale, kind, text, static_cast<int>(std::size(text)));
  return length > 0 ? ToUtf8({text, static_cast<std::size_t>(length - 1)}) : std::string();
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

BOOL CALLBACK TakeName(LPWSTR name, CALID, LPWSTR, LPARAM take) {
  const auto& give = *reinterpret_cast<const std::function<bool(std::string_view)>*>(take);
  return give(ToUtf8(name)) ? TRUE : FALSE;
}

}  // namespace

WindowsLocale::WindowsLocale()
    : pattern_(Info(::GetThreadLocale(), LOCALE_SSHORTDATE),
               Info(::GetThreadLocale(), LOCALE_STIMEFORMAT).find('t') != std::string::npos) {}

LocaleId WindowsLocale::ThreadLocale() {
  return ::GetThreadLocale();
}

std::string WindowsLocale::LocaleInfo(LocaleId locale, std::uint32_t kind) {
  return Info(locale, kind);
}

void WindowsLocale::EnumCalendarInfo(LocaleId locale, std::uint32_t calendarType,
                                     const std::function<bool(std::string_view)>& name) {
  wchar_t localeName[LOCALE_NAME_MAX_LENGTH];
  if (::LCIDToLocaleName(locale, localeName, LOCALE_NAME_MAX_LENGTH, 0) == 0) return;
  ::EnumCalendarInfoExEx(TakeName, localeName, ENUM_ALL_CALENDARS, nullptr, calendarType,
                         reinterpret_cast<LPARAM>(&name));
}

CodePage WindowsLocale::AnsiCodePage() {
  return ::GetACP();
}

std::string WindowsLocale::ToCodePage(std::string_view text, CodePage page) {
  if (page == code_pages::WesternEuropean) return ToCodePage1252(text);
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
  if (page == code_pages::WesternEuropean) return FromCodePage1252(bytes);
  if (page == code_pages::Utf8) return ValidUtf8(bytes);
  std::wstring wide(bytes.size(), L'\0');
  const int length = ::MultiByteToWideChar(page, 0, bytes.data(), static_cast<int>(bytes.size()),
                                           wide.data(), static_cast<int>(wide.size()));
  return ToUtf8({wide.data(), static_cast<std::size_t>(length)});
}

}  // namespace velkor
