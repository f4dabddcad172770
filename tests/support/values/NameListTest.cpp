// tests/support/values/NameListTest.cpp: one name of a list is replaced and no other.
#include "support/values/NameList.h"

#include <gtest/gtest.h>

namespace velkor {
namespace {

TEST(NameList, OnlyTheOneNameIsReplacedAndItStandsOnce) {
  const struct {
    std::string names, after;
  } cases[] = {{"", ""},
               {"Work", "Job"},
               {"A,  Work , Workshop, work", "A, Job, Workshop, work"},
               {"A,Work", "A,Work"},
               {"Work, B, Job", "B, Job"},
               {"Job, Work, Work", "Job"},
               {"Workshop", "Workshop"}};
  for (const auto& [names, after] : cases) {
    EXPECT_EQ(WithNameReplaced(names, ", ", "Work", "Job"), after);
    EXPECT_EQ(HasName(names, ", ", "Work"), names != after) << names;
  }
}

}  // namespace
}  // namespace velkor
