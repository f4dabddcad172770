// tests/categories/ColourListTest.cpp: the text of a colour record.
#include "categories/ColourList.h"

#include <gmock/gmock.h>

#include "support/values/Error.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ColourList, WhatSurroundsTheBodyDoesNotCount) {
  for (const char* body : {"--H--\r\nA|1\r\nB|2", "  \r\n\t --H--\r\nA|1\r\nB|2 \x01\r\n\r\n ",
                           "\x1F--H--\r\nA|1\r\nB|2\r\n"}) {
    EXPECT_THAT(SplitColourList(body), ElementsAre("--H--", "A|1", "B|2")) << body;
  }
  EXPECT_THAT(SplitColourList(""), IsEmpty());
  EXPECT_THAT(SplitColourList(" \r\n\t\x01 "), IsEmpty());
  // The bytes of other characters are no controls.
  EXPECT_THAT(SplitColourList("\u00A0A|1\u00A0"), ElementsAre("\u00A0A|1\u00A0"));
}

TEST(ColourList, EachLineButTheHeaderIsACategory) {
  EXPECT_THAT(
      CategoriesOf({"--DO NOT EDIT LIST MANUALLY--", "Key Customer|878787", "Other|-1",
                    "Wide|2147483647", "Low|-2147483648", " Blank |0", "Bar|5|6"}),
      ElementsAre(Category{"Key Customer", Colour{878787}}, Category{"Other", Colour{-1}},
                  Category{"Wide", Colour{2147483647}}, Category{"Low", Colour{-2147483647 - 1}},
                  Category{" Blank ", Colour{0}}, Category{"Bar", Colour{5}}));
  EXPECT_THAT(CategoriesOf({"whatever|9"}), IsEmpty());
  EXPECT_THAT(CategoriesOf({}), IsEmpty());
}

TEST(ColourList, ALineWithoutColourIsNamed) {
  for (const char* bad : {"Leave", "Leave|", "Leave|red", "Leave|1x", "Leave|2147483648",
                          "Leave|-2147483649", "Leave|99999999999999999999", ""}) {
    try {
      CategoriesOf({"header", "Good|1", bad});
      FAIL() << bad;
    } catch (const Error& error) {
      EXPECT_EQ(error.Number(), errors::TypeMismatch);
      EXPECT_THAT(error.Description(), testing::HasSubstr("Line 3"));
      EXPECT_THAT(error.Description(), testing::HasSubstr("\"" + std::string(bad) + "\""));
    }
  }
}

}  // namespace
}  // namespace velkor
