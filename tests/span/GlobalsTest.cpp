// tests/span/GlobalsTest.cpp: the query text of a span.
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

}  // namespace
}  // namespace velkor
