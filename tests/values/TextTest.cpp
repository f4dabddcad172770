// tests/values/TextTest.cpp: pieces, UTF-8 good and bad, and case-insensitive order.
#include "values/Text.h"

#include <gmock/gmock.h>

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Text, AnEmptyTextHasNoPieces) {
  EXPECT_THAT(Split("", ", "), IsEmpty());
  EXPECT_THAT(Split(", ", ", "), ElementsAre("", ""));
  EXPECT_THAT(Split("a,b, c", ", "), ElementsAre("a,b", "c"));
  EXPECT_THAT(Split("a, , ", ", "), ElementsAre("a", "", ""));
}

TEST(Text, OnlyBlanksAreTrimmed) {
  EXPECT_EQ(Trim("  \ta b\n  "), "\ta b\n");
  EXPECT_EQ(Trim("   "), "");
}

TEST(Text, ReplacementIsNotReplacedAgain) {
  EXPECT_EQ(Replace("a, b, c", ", ", " AND , "), "a AND , b AND , c");
  EXPECT_EQ(Replace("aaa", "aa", "a"), "aa");
}

TEST(Text, WholeNumbersOnly) {
  EXPECT_EQ(ParseInteger("+1252"), 1252);
  EXPECT_EQ(ParseInteger("-0"), 0);
  for (const auto* text : {"", "+", "1 ", " 1", "1.5", "+-1", "0x1", "99999999999999999999"}) {
    EXPECT_EQ(ParseInteger(text), std::nullopt) << text;
  }
}

TEST(Text, EachByteThatBeginsNoCharacterIsReplaced) {
  const std::string replacement = "\xEF\xBF\xBD";
  EXPECT_EQ(ValidUtf8("a\xFFz"), "a" + replacement + "z");
  EXPECT_EQ(ValidUtf8("\xE2\x82"), replacement + replacement);
  EXPECT_EQ(ValidUtf8("\xC0\x80"), replacement + replacement);
  EXPECT_EQ(ValidUtf8("\xED\xA0\x80"), replacement + replacement + replacement);
  EXPECT_EQ(ValidUtf8("\xF4\x90\x80\x80").size(), 4 * replacement.size());
  EXPECT_EQ(ValidUtf8("\xF0\x9F\x98\x80|\xE2\x82\xAC"), "\xF0\x9F\x98\x80|\xE2\x82\xAC");
}

TEST(Text, CutsSplitNoCharacter) {
  const std::string text = "a\xE2\x82\xAC\xF0\x9F\x98\x80";
  const std::size_t starts[] = {0, 1, 1, 1, 4, 4, 4, 4, 8, 8};
  for (std::size_t bytes = 0; bytes < std::size(starts); ++bytes) {
    EXPECT_EQ(CutAtCharacter(text, bytes).size(), starts[bytes]);
  }
}

TEST(Text, OrderIgnoresCaseInSeveralScripts) {
  for (const auto& [a, b] : {std::pair("ÄÖŸ", "äöÿ"), std::pair("ŁŽŚ", "łžś"),
                             std::pair("ΑΣΩ", "ασω"), std::pair("ЖЂЯ", "жђя"), std::pair("", "")}) {
    EXPECT_EQ(CompareText(a, b), 0) << a;
    EXPECT_EQ(CompareText(b, a), 0) << a;
  }
  for (const auto& [before, after] :
       {std::pair("", "a"), std::pair("9", "a"), std::pair("a", "B"), std::pair("A", "ab"),
        std::pair("_", "A"), std::pair("Z", "ä")}) {
    EXPECT_EQ(CompareText(before, after), -1) << before << " " << after;
    EXPECT_EQ(CompareText(after, before), 1) << before << " " << after;
  }
}

}  // namespace
}  // namespace velkor
