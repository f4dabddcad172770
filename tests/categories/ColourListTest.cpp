// tests/categories/ColourListTest.cpp: the text of a colour record.
#include "categories/ColourList.h"

#include <gmock/gmock.h>

#include "values/Error.h"

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
  const std::vector<Category> categories{
      {"Key Customer", Colour{878787}}, {"Other", Colour{-1}},  {"Wide", Colour{2147483647}},
      {"Low", Colour{-2147483647 - 1}}, {" Blank ", Colour{0}}, {"", Colour{5}}};
  const std::string text =
      "--DO NOT EDIT LIST MANUALLY--\r\nKey Customer|878787\r\nOther|-1\r\n"
      "Wide|2147483647\r\nLow|-2147483648\r\n Blank |0\r\n|5";
  EXPECT_EQ(ColourListText(categories), text);
  const ListedCategories listed = CategoriesOf(SplitColourList(text));
  EXPECT_EQ(listed.categories, categories);
  EXPECT_FALSE(listed.fault);
  EXPECT_THAT(CategoryNamesOf(SplitColourList(text)),
              ElementsAre("Key Customer", "Other", "Wide", "Low", " Blank ", ""));
  // A third part does not count.
  EXPECT_THAT(CategoriesOf({"whatever|9", "Bar| 5 |6"}).categories,
              ElementsAre(Category{"Bar", Colour{5}}));
  EXPECT_THAT(CategoriesOf({}).categories, IsEmpty());
  EXPECT_THAT(CategoryNamesOf({}), IsEmpty());
}

TEST(ColourList, ALineThatIsNoCategoryIsNamedAndThoseBeforeItAreKept) {
  const std::pair<const char*, long> lines[] = {{"", errors::TypeMismatch},
                                                {"Leave", errors::TypeMismatch},
                                                {"Leave|", errors::TypeMismatch},
                                                {"Leave|1x", errors::TypeMismatch},
                                                {"Leave|2147483648", errors::Overflow},
                                                {"Leave|99999999999999999999", errors::Overflow}};
  for (const auto& [bad, number] : lines) {
    const ListedCategories listed = CategoriesOf({"header", "Good|1", bad, "After|2"});
    EXPECT_THAT(listed.categories, ElementsAre(Category{"Good", Colour{1}})) << bad;
    ASSERT_TRUE(listed.fault) << bad;
    EXPECT_EQ(listed.fault->Number(), number) << bad;
    EXPECT_THAT(listed.fault->Description(), testing::HasSubstr("Line 3 "));
    EXPECT_THAT(listed.fault->Description(), testing::HasSubstr("\"" + std::string(bad) + "\""));
  }
}

TEST(ColourList, MoreCategoriesThanATableHoldsAreAFaultOfTheFirstBeyond) {
  const ListedCategories listed = CategoriesOf(std::vector<std::string>(40000, "A|1"));
  EXPECT_EQ(listed.categories.size(), CategoryTable::MostCategories);
  ASSERT_TRUE(listed.fault);
  EXPECT_EQ(listed.fault->Number(), errors::Overflow);
  EXPECT_THAT(listed.fault->Description(), testing::HasSubstr("Line 32769 "));
}

TEST(ColourList, TheDefaultListCountsDownToALightGrey) {
  const std::vector<Category> categories = DefaultCategories();
  ASSERT_EQ(categories.size(), 15U);
  EXPECT_EQ(categories[8], (Category{"Unused 09", Colour{797979}}));
  EXPECT_EQ(categories[13], (Category{"Unused 14", Colour{747474}}));
  EXPECT_EQ(categories[14], (Category{"Other", Colour{13421772}}));
}

}  // namespace
}  // namespace velkor
