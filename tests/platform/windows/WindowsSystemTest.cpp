// tests/platform/windows/WindowsSystemTest.cpp: locale, registry, settings, environment and clock.
#include "platform/windows/system/WindowsSystem.h"

#include <gmock/gmock.h>

#include "platform/windows/system/Wide.h"
#include "platform/windows/system/Win32.h"
#include "platform/windows/system/WindowDensity.h"
#include "platform/windows/system/WindowsLocale.h"
#include "platform/windows/system/WindowsRegistry.h"
#include "platform/windows/system/WindowsSettings.h"
#include "values/Error.h"

namespace velkor {
namespace {

constexpr LocaleId German = 0x0407;

std::string FirstName(LocaleApi& locale, LocaleId id, std::uint32_t type) {
  std::string result;
  locale.EnumCalendarInfo(id, type, [&](std::string_view name) {
    result = name;
    return false;
  });
  return result;
}

TEST(WindowsLocale, AnswersForTheLocaleThatIsAskedFor) {
  WindowsLocale locale;
  EXPECT_EQ(locale.LocaleInfo(German, locale_info::DefaultAnsiCodePage), "1252");
  EXPECT_EQ(locale.LocaleInfo(0x0419, locale_info::DefaultAnsiCodePage), "1251");
  EXPECT_EQ(locale.LocaleInfo(0x0809, locale_info::ShortDateOrder), "1");
  EXPECT_EQ(FirstName(locale, German, 7), "Montag");
  EXPECT_EQ(FirstName(locale, German, 23), "März");
  EXPECT_THAT(FirstName(locale, German, 14), testing::StartsWith("Mo"));
  EXPECT_EQ(FirstName(locale, 0x0409, 34), "Jan");
  EXPECT_NE(locale.ThreadLocale(), 0U);
  EXPECT_EQ(locale.LocaleInfo(German, locale_info::DecimalSign), ",");
  EXPECT_LT(locale.Compare("able", "Ärzte"), 0);
  EXPECT_LT(locale.Compare("Ärzte", "Zoo"), 0);
  EXPECT_EQ(locale.Compare("Zoo", "Zoo"), 0);
}

BOOL CALLBACK Collect(LPWSTR name, DWORD, LPARAM names) {
  reinterpret_cast<std::vector<std::wstring>*>(names)->emplace_back(name);
  return TRUE;
}

std::string OwnWord(LCID locale, LCTYPE kind) {
  wchar_t text[128]{};
  ::GetLocaleInfoW(locale, kind, text, 128);
  return ToUtf8(text);
}

TEST(WindowsLocale, NamesOfEveryScriptComeThroughWhole) {
  std::vector<std::wstring> names;
  ::EnumSystemLocalesEx(Collect, LOCALE_WINDOWS, reinterpret_cast<LPARAM>(&names), nullptr);
  ASSERT_GT(names.size(), 50U);
  WindowsLocale locale;
  for (const std::wstring& name : names) {
    const LCID id = ::LocaleNameToLCID(name.c_str(), 0);
    if (name.empty() || id == 0 || id == LOCALE_CUSTOM_UNSPECIFIED) continue;
    const std::string of = ToUtf8(name);
    EXPECT_EQ(locale.LocaleInfo(id, LOCALE_SSHORTDATE), OwnWord(id, LOCALE_SSHORTDATE)) << of;
    for (DWORD day = 0; day < 7; ++day) {
      const std::string first = FirstName(locale, id, CAL_SDAYNAME1 + day);
      // A locale's first calendar may lack names.
      if (first.empty()) continue;
      EXPECT_EQ(first, OwnWord(id, LOCALE_SDAYNAME1 + day)) << of;
    }
  }
}

TEST(WindowsLocale, DatesFollowTheUsersFormat) {
  const LCID before = ::GetThreadLocale();
  ::SetThreadLocale(German);
  EXPECT_THAT(WindowsLocale().DateToText(Date::FromFields({2005, 4, 8, 21, 5, 9})),
              testing::AnyOf("08.04.2005 21:05:09", "8.4.2005 21:05:09"));
  ::SetThreadLocale(0x0409);
  WindowsLocale english;
  EXPECT_EQ(english.DateToText(Date::FromFields({2005, 4, 8, 21, 5, 9})), "4/8/2005 9:05:09 PM");
  EXPECT_EQ(english.ShortDate(Date::FromYmd(100, 1, 2)), "1/2/0100");
  ::SetThreadLocale(before);
}

TEST(WindowsLocale, CodePagesLeadBackAndLackingCharactersBecomeOneQuestionMark) {
  WindowsLocale locale;
  EXPECT_EQ(locale.ToCodePage("Ünï–€ 日", 1252), "\xDCn\xEF\x96\x80 ?");
  EXPECT_EQ(locale.ToCodePage("日\xFF", 65001), "日\xEF\xBF\xBD");
  EXPECT_EQ(locale.ToCodePage("Да 日 😀 é", 1251), "\xC4\xE0 ? ? ?");
  for (const auto& [page, text] : {std::pair{1251, "Привет"}, {932, "日本語"}, {950, "漢字"}}) {
    const std::string bytes = locale.ToCodePage(text, CodePage(page));
    EXPECT_EQ(locale.FromCodePage(bytes, CodePage(page)), text);
  }
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes.push_back(static_cast<char>(byte));
  for (const CodePage page : {1252U, 1250U, 1253U}) {
    EXPECT_EQ(locale.ToCodePage(locale.FromCodePage(bytes, page), page), bytes) << page;
  }
}

TEST(WindowsRegistry, ReadsTextAndBytesAndAnswersCodes) {
  HKEY opened = nullptr;
  ASSERT_EQ(::RegCreateKeyW(HKEY_CURRENT_USER, L"Software\\VelkorTest", &opened), ERROR_SUCCESS);
  const RegistryKey key(opened);
  const wchar_t text[] = L"éĀ日;";
  const wchar_t question[] = L"a?";
  const BYTE bytes[] = {1, 0, 255};
  ::RegSetValueExW(opened, L"text", 0, REG_SZ, reinterpret_cast<const BYTE*>(text), sizeof text);
  ::RegSetValueExW(opened, L"日", 0, REG_SZ, reinterpret_cast<const BYTE*>(question),
                   sizeof question);
  ::RegSetValueExW(opened, L"unended", 0, REG_SZ, reinterpret_cast<const BYTE*>(text), 4);
  ::RegSetValueExW(opened, L"bytes", 0, REG_BINARY, bytes, sizeof bytes);
  WindowsRegistry registry;
  const auto read = [&](const char* name) {
    return registry.QueryValue(RootKey::CurrentUser, "Software\\VelkorTest", name);
  };
  EXPECT_EQ(read("text").data, "éĀ日;");
  EXPECT_EQ(read("unended").data, "éĀ");
  EXPECT_EQ(read("日").data, "a?");
  EXPECT_EQ(read("bytes").data, std::string("\x01\x00\xFF", 3));
  EXPECT_EQ(read("absent").code, registry_codes::FileNotFound);
  EXPECT_EQ(registry.QueryValue(RootKey::CurrentUser, "No\\Such\\Key", "x").code,
            registry_codes::FileNotFound);
  ::RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\VelkorTest");
}

TEST(WindowsSettings, KeepAnyTextWhereTheSettingsFunctionsDocumentIt) {
  WindowsSettings settings;
  settings.Save("Velkor Test", "Filtering é", "k", "x, \"日Ā\"\n");
  settings.Save("Velkor Test", "Printing", "k", "");
  EXPECT_EQ(WindowsSettings().Get("Velkor Test", "Filtering é", "k", "-"), "x, \"日Ā\"\n");
  settings.Save("Velkor Test", "Printing", "DefaultHeader", "Āda");
  EXPECT_EQ(settings.Get("Velkor Test", "Printing", "DefaultHeader", "-"), "Āda");
  EXPECT_EQ(settings.Get("Velkor Test", "Printing", "k", "-"), "");
  EXPECT_EQ(settings.Get("Velkor Test", "Other", "k", "-"), "-");
  EXPECT_EQ(WindowsRegistry()
                .QueryValue(RootKey::CurrentUser,
                            "Software\\VB and VBA Program Settings\\Velkor Test\\Filtering é", "k")
                .code,
            registry_codes::Success);
  EXPECT_THROW(settings.Save("Velkor Test", std::string(300, 'x'), "k", "v"), Error);
  ::RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\VB and VBA Program Settings\\Velkor Test");
}

TEST(WindowsEnvironment, AnswersVariablesInUtf8) {
  ::SetEnvironmentVariableW(L"VELKOR_TEST", L"é日");
  EXPECT_EQ(WindowsEnvironment().Variable("VELKOR_TEST"), "é日");
  EXPECT_EQ(WindowsEnvironment().Variable("VELKOR_NOT_SET"), "");
  EXPECT_NE(WindowsEnvironment().Variable("TMP"), "");
  EXPECT_TRUE(WindowsClock().Now().IsValid());
}

TEST(WindowDensity, WhatIsMadeOverAWindowCountsAsTheWindowDoes) {
  const auto same = [](DPI_AWARENESS_CONTEXT one) {
    return ::AreDpiAwarenessContextsEqual(one, ::GetThreadDpiAwarenessContext()) != FALSE;
  };
  const DPI_AWARENESS_CONTEXT usual = ::GetThreadDpiAwarenessContext();
  for (const DPI_AWARENESS_CONTEXT made :
       {DPI_AWARENESS_CONTEXT_UNAWARE, DPI_AWARENESS_CONTEXT_SYSTEM_AWARE,
        DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE}) {
    ::SetThreadDpiAwarenessContext(made);
    const HWND window =
        ::CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    ::SetThreadDpiAwarenessContext(usual);
    {
      const AwarenessScope scope(window);
      EXPECT_TRUE(same(made));
      const AwarenessScope none(nullptr);
      EXPECT_TRUE(same(made));
    }
    EXPECT_TRUE(same(usual));
    KeepDotsPerInch(window, 144);
    EXPECT_EQ(DotsPerInch(window), 144U);
    KeepDotsPerInch(window, 0);
    EXPECT_EQ(DotsPerInch(window), ::GetDpiForWindow(window));
    ::DestroyWindow(window);
  }
}

TEST(Wide, InvalidTextBecomesReplacementCharacters) {
  EXPECT_EQ(ToUtf8(ToWide("a\xFFé😀")), "a\xEF\xBF\xBDé😀");
  EXPECT_EQ(ToUtf8(L"\xD83D"
                   L"x\xDE00"),
            "\xEF\xBF\xBDx\xEF\xBF\xBD");
  EXPECT_EQ(SystemMessage(0xE0001234), "system error 3758101044");
}

}  // namespace
}  // namespace velkor
