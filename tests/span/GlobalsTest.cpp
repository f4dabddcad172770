// tests/span/GlobalsTest.cpp: the query text of a span and the cleaning of texts.
#include "span/Globals.h"

#include <gtest/gtest.h>

#include "platform/headless/FixedLocale.h"

namespace velkor {
namespace {

TEST(Globals, TheQueryHasTheUsersDatesAndEnglishTimes) {
  FixedLocale locale;
  EXPECT_EQ(Globals::ViewRestriction({2005, 7}, locale),
            "[Start] <= \"6/30/2006 11:59 PM\" AND [End] > \"7/1/2005 12:00 AM\"");
  locale.dates = DatePattern("d.M.y");
  EXPECT_EQ(Globals::ViewRestriction({2005, 1}, locale),
            "[Start] <= \"31.12.2005 11:59 PM\" AND [End] > \"1.1.2005 12:00 AM\"");
}

TEST(Globals, BarsAndControlCharactersAreStripped) {
  const std::pair<std::string, std::string> texts[] = {
      {"  ", ""}, {" | ", "  "}, {"\x7F\xC2\x81", "\x7F\xC2\x81"}, {std::string("a\0b", 3), "ab"}};
  for (const auto& [text, clean] : texts) EXPECT_EQ(Globals::StripControlChars(text), clean);
}

}  // namespace
}  // namespace velkor
