// tests/categories/ColourListTest.cpp: the text of a colour record.
#include "categories/ColourList.h"

#include <gmock/gmock.h>

#include "values/Error.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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

}  // namespace
}  // namespace velkor
