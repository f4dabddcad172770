// tests/support/CodePage1252Test.cpp: every byte's way there and back, and what the page lacks.
#include "support/CodePage1252.h"

#include <gtest/gtest.h>

#include "values/Text.h"

namespace velkor {
namespace {

TEST(CodePage1252, EveryByteHasACharacterThatLeadsBackToIt) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes.push_back(static_cast<char>(byte));
  const std::string text = FromCodePage1252(bytes);
  EXPECT_EQ(text, ValidUtf8(text));
  EXPECT_EQ(ToCodePage1252(text), bytes);
}

TEST(CodePage1252, UndefinedBytesAreControlCharactersOfTheSameCode) {
  EXPECT_EQ(FromCodePage1252("\x81\x8D\x8F\x90\x9D"), "\u0081\u008D\u008F\u0090\u009D");
  EXPECT_EQ(ToCodePage1252("\u0081\u009D\u0080"), "\x81\x9D?");
}

TEST(CodePage1252, EachCharacterThatThePageLacksBecomesOneQuestionMark) {
  EXPECT_EQ(ToCodePage1252("a 日本 😀 b"), "a ?? ? b");
  EXPECT_EQ(ToCodePage1252("\xFF"
                           "ab\xC3"),
            "?ab?");
}

TEST(CodePage1252, FindsTheFirstOtherCharacterWhereverItStandsInALongText) {
  for (std::size_t at = 0; at < 40; ++at) {
    const std::string before(at, 'x');
    const std::string after(40 - at, 'y');
    EXPECT_EQ(ToCodePage1252(before + "é" + after), before + "\xE9" + after);
    EXPECT_EQ(FromCodePage1252(before + "\xE9" + after), before + "é" + after);
  }
}

}  // namespace
}  // namespace velkor
