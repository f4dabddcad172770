// tests/platform/desktop/DesktopLocaleTest.cpp: dates, names and code pages of several locales.
#include "platform/desktop/DesktopLocale.h"

#include <gmock/gmock.h>

namespace velkor {
namespace {

using testing::StartsWith;

const Date Evening = Date::FromFields({2005, 4, 8, 21, 5, 9});

std::string Name(LocaleApi& locale, std::uint32_t type) {
  std::string result;
  locale.EnumCalendarInfo(locale.ThreadLocale(), type, [&](std::string_view name) {
    result += name;
    return true;
  });
  return result;
}

TEST(DesktopLocale, ShortDateHasFourDigitsOfYearInTheLocalesOrder) {
  struct Case {
    const char* name;
    std::string date, order;
    LocaleId id;
  };
  for (const Case& each :
       {Case{"en_US", "4/8/2005", "0", 0x0409}, Case{"en_GB", "08/04/2005", "1", 0x0809},
        Case{"de_DE", "08.04.2005", "1", 0x0407}, Case{"de_AT", "08.04.2005", "1", 0x0C07},
        Case{"sv_SE", "2005-04-08", "2", 0x041D}, Case{"ja_JP", "2005/04/08", "2", 0x0411},
        Case{"fr_FR", "08/04/2005", "1", 0x040C}}) {
    DesktopLocale locale{QLocale(QString::fromLatin1(each.name))};
    EXPECT_EQ(locale.ShortDate(Evening), each.date) << each.name;
    EXPECT_EQ(locale.LocaleInfo(0, locale_info::ShortDateOrder), each.order) << each.name;
    EXPECT_EQ(locale.ThreadLocale(), each.id) << each.name;
  }
}

TEST(DesktopLocale, ListsAndDecimalsFollowTheLocale) {
  struct Case {
    const char* name;
    const char* decimalSign;
    /// In the order of the language.
    std::vector<std::string> listed;
  };
  for (const Case& each : {Case{"en_US", ".", {"able", "Arzt", "Ärzte", "Zoo", "Ωmega"}},
                           Case{"de_DE", ",", {"Arzt", "Ärzte", "arzten", "Azur", "Zoo"}},
                           Case{"sv_SE", ",", {"Arzt", "zebra", "Zoo", "Åbo", "Ärzte"}}}) {
    DesktopLocale locale{QLocale(QString::fromLatin1(each.name))};
    EXPECT_EQ(locale.LocaleInfo(0, locale_info::DecimalSign), each.decimalSign) << each.name;
    for (std::size_t i = 1; i < each.listed.size(); ++i) {
      EXPECT_LT(locale.Compare(each.listed[i - 1], each.listed[i]), 0) << each.name << " " << i;
    }
    EXPECT_EQ(locale.Compare("Zoo", "Zoo"), 0);
  }
}

TEST(DesktopLocale, EveryLocaleWritesDistinctDatesInPlainDigits) {
  for (const QLocale& each :
       QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory)) {
    DesktopLocale locale(each);
    const std::string date = locale.ShortDate(Date::FromYmd(2005, 11, 23));
    for (const char* part : {"2005", "11", "23"}) {
      EXPECT_THAT(date, testing::HasSubstr(part)) << each.name().toStdString();
    }
    EXPECT_NE(locale.ThreadLocale(), 0U);
    EXPECT_NE(locale.DateToText(Evening), locale.DateToText(Date(Evening.Days() - 0.5)))
        << each.name().toStdString();
    EXPECT_FALSE(Name(locale, 32).empty());
  }
}

TEST(DesktopLocale, TimeFollowsTheDateUnlessItIsMidnight) {
  DesktopLocale german{QLocale(QStringLiteral("de_DE"))};
  EXPECT_EQ(german.DateToText(Evening), "08.04.2005 21:05:09");
  EXPECT_EQ(german.DateToText(Evening.Midnight()), "08.04.2005");
  DesktopLocale english{QLocale(QStringLiteral("en_US"))};
  EXPECT_EQ(english.DateToText(Evening), "4/8/2005 9:05:09 PM");
  DesktopLocale plain(QLocale::c());
  EXPECT_EQ(plain.DateToText(Evening), "4/8/2005 9:05:09 PM");
}

TEST(DesktopLocale, CalendarTypesNameDaysAndMonths) {
  DesktopLocale locale{QLocale(QStringLiteral("de_DE"))};
  EXPECT_EQ(Name(locale, 7), "Montag");
  EXPECT_EQ(Name(locale, 13), "Sonntag");
  EXPECT_THAT(Name(locale, 14), StartsWith("Mo"));
  EXPECT_EQ(Name(locale, 23), "März");
  EXPECT_THAT(Name(locale, 45), StartsWith("Dez"));
  EXPECT_EQ(Name(locale, 33), "");
}

TEST(DesktopLocale, EveryLetterPassesItsCodePages) {
  DesktopLocale locale;
  for (const CodePage page : {locale.AnsiCodePage(), locale.CachePage()}) {
    EXPECT_EQ(locale.ToCodePage("Ünï–€ 日\xFF", page), "Ünï–€ 日\xEF\xBF\xBD");
    EXPECT_EQ(locale.FromCodePage("Ünï–€ 😀", page), "Ünï–€ 😀");
  }
}

}  // namespace
}  // namespace velkor
