// tests/span/CategoryFilterTest.cpp: what a filter hides in both modes.
#include "span/CategoryFilter.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

#include "values/Text.h"

namespace velkor {
namespace {

CategoryFilter FilterOf(const std::string& text, bool matchAll, const std::string& list = ",") {
  CategoryFilter filter(CategorySeparator(list));
  filter.SetCategoryFilter(text);
  filter.SetFilterMode(matchAll);
  return filter;
}

// Every pair of an entry and a piece, compared.
bool HiddenByPlainRule(const std::string& filter, const std::string& categories, bool matchAll) {
  if (filter.empty()) return false;
  const auto entries = Split(filter, ", ");
  const auto pieces = Split(categories, ", ");
  const auto carried = [&](const std::string& entry) {
    return std::any_of(pieces.begin(), pieces.end(),
                       [&](const std::string& piece) { return Trim(piece) == entry; });
  };
  return matchAll ? !std::all_of(entries.begin(), entries.end(), carried)
                  : !std::any_of(entries.begin(), entries.end(), carried);
}

TEST(CategoryFilter, HidesWhatThePlainRuleHidesWhateverRepeatsOrIsEmpty) {
  std::mt19937 random(4);
  const auto someNames = [&](std::size_t most, std::size_t kinds) {
    const std::vector<std::string> few{"a", "b", "A", "", " b", "a ", " ", "ab", "ba"};
    std::string text;
    for (std::size_t left = random() % (most + 1); left > 0; --left) {
      const std::size_t kind = random() % kinds;
      text += kind < few.size() ? few[kind] : std::to_string(kind);
      if (left > 1) text += ", ";
    }
    return text;
  };
  int hidden = 0;
  constexpr int Rounds = 10'000;
  for (int round = 0; round < Rounds; ++round) {
    // Every hundredth filter has more names than a word has bits.
    const bool many = round % 100 == 0;
    const std::string filter = many ? someNames(400, 80) : someNames(4, 9);
    const std::string categories = many ? someNames(900, 80) : someNames(6, 9);
    for (const bool matchAll : {false, true}) {
      const bool expected = HiddenByPlainRule(filter, categories, matchAll);
      hidden += expected ? 1 : 0;
      ASSERT_EQ(FilterOf(filter, matchAll).IsFilteredOut(categories), expected)
          << "[" << filter << "] for [" << categories << "], " << (matchAll ? "all" : "any");
    }
  }
  EXPECT_GT(hidden, Rounds / 2);
  EXPECT_LT(hidden, Rounds * 3 / 2);
}

TEST(CategoryFilter, TheModeJoinsTheNamesForShowing) {
  CategoryFilter filter(CategorySeparator(";"));
  filter.SetCategoryFilter("Work; Home, sweet");
  EXPECT_EQ(filter.GetCategoryFilterText(), "Work; Home, sweet");
  EXPECT_THAT(filter.CategoryFilterList(), testing::ElementsAre("Work", "Home, sweet"));
  filter.SetFilterMode(true);
  EXPECT_EQ(filter.GetCategoryFilterText(), "Work AND Home, sweet");
  filter.SetFilterMode(false);
  EXPECT_EQ(filter.ToolTip(), "Active Filter: Work OR Home, sweet");
  filter.SetCategoryFilter("");
  EXPECT_THAT(filter.CategoryFilterList(), testing::IsEmpty());
  EXPECT_EQ(filter.GetCategoryFilterText(), "");
}

}  // namespace
}  // namespace velkor
