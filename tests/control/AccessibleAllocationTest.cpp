// tests/control/AccessibleAllocationTest.cpp: a tree of ten thousand bars costs what is asked of
// it.
#include "platform/Accessible.h"
#include "tests/CountedBlocks.h"
#include "tests/control/PlannerCase.h"

namespace velkor {
namespace {

class AccessibleAllocationTest : public PlannerCase {
 protected:
  /// Blocks that it takes to go through all nodes but not to ask about them.
  std::size_t BlocksOfWalk(AccessibleTree& tree, const AccessibleId& node) {
    const std::size_t before = countedBlocks;
    for (int i = 0; i < tree.ChildCount(node); ++i) BlocksOfWalk(tree, *tree.ChildAt(node, i));
    return countedBlocks - before;
  }
  std::size_t BlocksOfFacts(AccessibleTree& tree, const AccessibleId& node) {
    const std::size_t before = countedBlocks;
    EXPECT_TRUE(tree.FactsOf(node));
    return countedBlocks - before;
  }
};

TEST_F(AccessibleAllocationTest, NothingIsKeptForNodesThatNobodyAsksAbout) {
  std::vector<CalEvent> events;
  for (int i = 0; i < 10'000; ++i) {
    const Date start = At(2005, 1, 1 + i % 360);
    events.push_back(SampleEvent(std::to_string(i), start, start.AddDays(2)));
  }
  Start();
  Refreshed(events);
  AccessibleTree& tree = plan_.Accessible();
  const AccessibleId table = *tree.NodeOf(plan_.Elements().pic1);
  ASSERT_GT(tree.ChildCount(table), 10'000);
  EXPECT_EQ(BlocksOfWalk(tree, {}), 0u);
  const AccessibleId bar = *tree.ChildAt(table, 5000);
  EXPECT_GT(BlocksOfFacts(tree, bar), 10'000u) << "which appointments repeat is found out once";
  EXPECT_LT(BlocksOfFacts(tree, bar), 100u);
  EXPECT_LT(BlocksOfFacts(tree, *tree.ChildAt(table, 3)), 100u);
}

}  // namespace
}  // namespace velkor
