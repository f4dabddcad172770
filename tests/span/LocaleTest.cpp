// tests/span/LocaleTest.cpp: code pages, their fonts, and the names of days and months.
#include "span/Locale.h"

#include <gtest/gtest.h>

#include "platform/headless/FixedLocale.h"

namespace velkor {
namespace {

/// Answers the code page question with any text.
class AnsweringLocale : public FixedLocale {
 public:
  std::string codePageText;

  std::string LocaleInfo(LocaleId, std::uint32_t) override { return codePageText; }
};

TEST(Locale, TheCodePageIsCutAtTheFirstNul) {
  using namespace std::string_literals;
  AnsweringLocale locale;
  const std::pair<std::string, CodePage> answers[] = {{"1252\0\0\0\0\0\0\0\0\0\0\0\0"s, 1252},
                                                      {"932"s, 932},
                                                      {"874\0001"s, 874},
                                                      {""s, 0},
                                                      {"\0"s + "1252", 0},
                                                      {"OEM"s, 0}};
  for (const auto& [text, page] : answers) {
    locale.codePageText = text;
    EXPECT_EQ(Locale::AnsiCodePageOf(locale, 0x0409), page);
  }
}

TEST(Locale, FontsFollowTheCodePage) {
  struct Case {
    CodePage page;
    int charset;
    std::string face;
  };
  const Case cases[] = {{1250, 238, ""}, {932, 128, "ＭＳ Ｐゴシック"}, {65001, 1, ""}};
  for (const Case& c : cases) {
    for (const double size : {6.0, 8.25, 9.0, 12.0}) {
      Font font{"Arial", size, 77, true};
      Locale::ApplyCodePageFont(font, c.page);
      const double least = c.face.empty() ? 0.0 : 9.0;
      EXPECT_EQ(font, (Font{c.face, std::max(size, least), c.charset, true})) << c.page;
    }
  }
}

TEST(Locale, NamesStandInCalendarOrderWithSundayTwice) {
  FixedLocale locale;
  FixedNames other = FixedNames::English();
  for (auto* names :
       {&other.days, &other.abbreviatedDays, &other.months, &other.abbreviatedMonths}) {
    for (std::string& name : *names) name = "other calendar";
  }
  locale.calendars.push_back(other);
  const CalendarNames names = Locale::LoadCalendarNames(locale, 0x0409);
  EXPECT_EQ(names.months[1], "January");
  EXPECT_EQ(names.months[12], "December");
  EXPECT_EQ(names.abbreviatedMonths[12], "Dec");
  EXPECT_EQ(names.days[0], "Sunday");
  EXPECT_EQ(names.days[7], "Sunday");
  EXPECT_EQ(names.abbreviatedDays[6], "Sat");
  EXPECT_EQ(names.abbreviatedDays[7], "Sun");
}

}  // namespace
}  // namespace velkor
