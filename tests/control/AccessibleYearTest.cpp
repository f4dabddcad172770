// tests/control/AccessibleYearTest.cpp: what a screen reader is told of a planner.
#include "control/AccessibleYear.h"

#include <functional>
#include <map>

#include "tests/control/PlannerCase.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::Eq;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Optional;

class AccessibleYearTest : public PlannerCase {
 protected:
  AccessibleTree& Tree() { return plan_.Accessible(); }
  AccessibleFacts Facts(const AccessibleId& node) {
    return Tree().FactsOf(node).value_or(AccessibleFacts());
  }
  AccessibleId Node(const Element& element) { return Tree().NodeOf(element).value(); }
  AccessibleId Table() { return Node(plan_.Elements().pic1); }
  AccessibleId List() { return Node(plan_.Elements().legend.picCats); }
  AccessibleId Bar(int index) { return Tree().ChildAt(Table(), MonthRows + index).value(); }
  AccessibleId Day(Date date) {
    const DateFields fields = date.Fields();
    const int row = plan_.Grid().Span().RowOfMonth(fields.month);
    return Tree().ChildAt(Tree().ChildAt(Table(), row - 1).value(), fields.day - 1).value();
  }
  /// Every node, after its parent, each found again from its parent and from its place.
  void Walk(const AccessibleId& node, const std::function<void(const AccessibleId&)>& visit) {
    visit(node);
    for (int i = 0; i < Tree().ChildCount(node); ++i) {
      const AccessibleId child = Tree().ChildAt(node, i).value();
      EXPECT_EQ(Tree().ParentOf(child), node);
      EXPECT_EQ(Tree().IndexOf(child), i);
      EXPECT_EQ(Tree().NodeAt(child.kind, child.index), child);
      Walk(child, visit);
    }
  }
  /// A year with bars of one row, of two, on one another, before and after the year.
  void StartWithEvents() {
    Start();
    Refreshed({SampleEvent("over", At(2004, 12, 20), At(2005, 1, 4), "Work"),
               SampleEvent("a", At(2005, 3, 3), At(2005, 3, 5), "Work, Home"),
               SampleEvent("b", At(2005, 3, 4, 10), At(2005, 3, 4, 11, 30)),
               SampleEvent("a", At(2005, 3, 28), At(2005, 4, 2)),
               SampleEvent("end", At(2005, 12, 30), At(2006, 1, 9))});
  }
};

TEST_F(AccessibleYearTest, TheTreeHasEveryElementDayBarAndCategoryWhereItIsDrawn) {
  StartWithEvents();
  std::map<AccessibleRole, int> counts;
  Walk({}, [&](const AccessibleId& node) {
    const AccessibleFacts facts = Facts(node);
    ++counts[facts.role];
    EXPECT_FALSE(facts.name.empty() && facts.role != AccessibleRole::Label);
    // The pixel in the middle is the node's, or that of what lies over it.
    const int x = (facts.bounds.left + facts.bounds.right) / 2;
    const int y = (facts.bounds.top + facts.bounds.bottom) / 2;
    const bool isLeaf = Tree().ChildCount(node) == 0 && facts.visible && facts.inSight;
    if (!isLeaf) return;
    const AccessibleId there = Tree().NodeAtPoint(x, y).value();
    const bool isCovered =
        facts.role == AccessibleRole::Cell && Facts(there).role == AccessibleRole::Bar;
    EXPECT_TRUE(there == node || isCovered) << facts.name;
  });
  const BandLayout& layout = plan_.Grid().Layout();
  EXPECT_EQ(layout.bars.size(), 6u);
  const std::map<AccessibleRole, int> expected{
      {AccessibleRole::Control, 1}, {AccessibleRole::ToolBar, 1},
      {AccessibleRole::Button, 7},  {AccessibleRole::Label, 2},
      {AccessibleRole::Status, 1},  {AccessibleRole::Edit, 1},
      {AccessibleRole::Header, 2},  {AccessibleRole::ScrollBar, 2},
      {AccessibleRole::Table, 1},   {AccessibleRole::Row, 12},
      {AccessibleRole::Cell, 365},  {AccessibleRole::Bar, 6},
      {AccessibleRole::List, 1},    {AccessibleRole::ListItem, plan_.Grid().Categories().Count()}};
  EXPECT_EQ(counts, expected);

  const Rect& parent = plan_.Elements().picParent.Bounds();
  const Rect& pic1 = plan_.Elements().pic1.Bounds();
  const PixelRect corner = ToPixels({parent.left, parent.top, pic1.left, pic1.top}, {});
  for (std::size_t i = 0; i < layout.bars.size(); ++i) {
    const AccessibleFacts facts = Facts(Bar(static_cast<int>(i)));
    PixelRect drawn = ToPixels(BarRect(layout.bars[i], plan_.Grid().Geometry(), layout), {});
    drawn = {drawn.left + corner.left + corner.right, drawn.top + corner.top + corner.bottom,
             drawn.right + corner.left + corner.right, drawn.bottom + corner.top + corner.bottom};
    EXPECT_EQ(facts.bounds, drawn) << facts.name;
    EXPECT_EQ(facts.name, plan_.Grid().Events()[layout.bars[i].event].Subject);
  }
}

TEST_F(AccessibleYearTest, DaysAndBarsAreToldInWords) {
  StartWithEvents();
  const struct {
    AccessibleId node;
    const char* name;
    const char* description;
  } cases[] = {
      {Tree().ChildAt(Table(), 2).value(), "March 2005", ""},
      {Day(At(2005, 4, 18)), "Monday 18 April 2005", "Today"},
      {Day(At(2005, 1, 9)), "Sunday 9 January 2005", ""},
      {Day(At(2005, 3, 3)), "Thursday 3 March 2005", "1 appointment: Subject of a"},
      {Day(At(2005, 3, 4)), "Friday 4 March 2005", "2 appointments: Subject of a, Subject of b"},
      {Bar(0), "Subject of over", "Monday 20 December 2004 to Monday 3 January 2005, Work"},
      {Bar(1), "Subject of a", "Thursday 3 March 2005 to Friday 4 March 2005, Work, Home, repeats"},
      {Bar(2), "Subject of b", "Friday 4 March 2005 10:00:00 AM to 11:30:00 AM"},
  };
  for (const auto& [node, name, description] : cases) {
    EXPECT_EQ(Facts(node).name, name);
    EXPECT_EQ(Facts(node).description, description) << name;
  }
  Refreshed({SampleEvent("c", At(2005, 3, 3), At(2005, 3, 5))});
  plan_.Elements().pic1.onKeyDown(Key::Right);
  EXPECT_EQ(Facts(*Tree().CurrentOf(plan_.Elements().pic1)).name, "Monday 18 April 2005");
  EXPECT_EQ(Facts(Node(plan_.Elements().lblSelectedYear)).name, "Year 2005");
  EXPECT_THAT(Facts(Table()).description, HasSubstr("1 appointment"));
  EXPECT_THAT(Facts(Node(plan_.Elements().imgLogo)).value, Eq(plan_.Elements().imgLogo.ToolTip()));
}

TEST_F(AccessibleYearTest, ANodeOfAnEarlierYearOrLoadIsGone) {
  StartWithEvents();
  const AccessibleId bar = Bar(1);
  const AccessibleId day = Day(At(2005, 3, 4));
  const AccessibleId category = Tree().ChildAt(List(), Tree().ChildCount(List()) - 1).value();
  ASSERT_TRUE(Tree().FactsOf(bar) && Tree().FactsOf(day) && Tree().FactsOf(category));
  const auto expectGone = [&](const AccessibleId& node) {
    EXPECT_EQ(Tree().FactsOf(node), std::nullopt);
    EXPECT_EQ(Tree().ParentOf(node), std::nullopt);
    EXPECT_EQ(Tree().ChildCount(node), 0);
    EXPECT_EQ(Tree().ChildAt(node, 0), std::nullopt);
    EXPECT_THAT(Tree().SelectionOf(node), IsEmpty());
    EXPECT_FALSE(Tree().Act(node) || Tree().Select(node));
  };
  Refreshed({EventA});
  expectGone(bar);
  EXPECT_TRUE(Tree().FactsOf(day)) << "the days are those of before";
  EXPECT_EQ(Tree().NodeAt(bar.kind, bar.index), std::nullopt) << "there is one bar only";
  plan_.Elements().Toolbar1.ClickButton(toolbar_keys::Next);
  expectGone(day);
  plan_.CatDelete(plan_.Grid().Categories().At(1).name);
  expectGone(category);
  for (const AccessibleId& nonsense : {AccessibleId{99, 0, 0}, AccessibleId{1, 999, 0},
                                       AccessibleId{0, 1, 0}, AccessibleId{2, 99, 0}}) {
    expectGone(nonsense);
    EXPECT_EQ(Tree().NodeAt(nonsense.kind, nonsense.index), std::nullopt);
  }
}

TEST_F(AccessibleYearTest, NodesAreSelectedPressedAndOpenedAsByHand) {
  StartWithEvents();
  std::vector<std::string> told;
  Tree().onChange = [&](AccessibleChange change, const AccessibleId& node) {
    const char* const words[] = {"current ", "selection ", "children "};
    told.push_back(words[static_cast<int>(change)] + Facts(node).name);
  };
  const auto takeTold = [&] { return std::exchange(told, {}); };

  EXPECT_TRUE(Tree().Select(Day(At(2005, 3, 4))));
  EXPECT_TRUE(Facts(Day(At(2005, 3, 4))).selected);
  EXPECT_THAT(Tree().CurrentOf(plan_.Elements().pic1), Optional(Day(At(2005, 3, 4))));
  EXPECT_THAT(Tree().SelectionOf(Table()), ElementsAre(Day(At(2005, 3, 4))));
  EXPECT_THAT(takeTold(), ElementsAre("current Friday 4 March 2005", "selection Year"));
  plan_.Elements().pic1.onKeyDown(Key::Space);
  EXPECT_THAT(takeTold(), ElementsAre("current Subject of b"));
  EXPECT_TRUE(Facts(Bar(2)).selected);
  EXPECT_THAT(Tree().CurrentOf(plan_.Elements().pic1), Optional(Bar(2)));
  EXPECT_TRUE(Tree().Select(Bar(1)));
  EXPECT_THAT(takeTold(), ElementsAre("current Thursday 3 March 2005", "current Subject of a"));
  EXPECT_TRUE(Tree().Act(Tree().ChildAt(Table(), 2).value()));
  EXPECT_EQ(Tree().SelectionOf(Table()).size(), 31u);
  EXPECT_TRUE(Facts(Tree().ChildAt(Table(), 2).value()).selected);
  EXPECT_THAT(takeTold(), ElementsAre("selection Year"));

  const AccessibleId category = Tree().ChildAt(List(), 1).value();
  EXPECT_TRUE(Tree().Act(category));
  EXPECT_TRUE(Facts(category).selected);
  EXPECT_THAT(Tree().SelectionOf(List()), ElementsAre(category));
  EXPECT_THAT(takeTold(),
              ElementsAre("selection " + Facts(category).name, "current " + Facts(category).name));

  inspect_ = [&](OutlookItem& item) { told.push_back("open " + item.Subject()); };
  calendar_.Add(SampleItem("a", At(2005, 3, 3), At(2005, 3, 5)));
  EXPECT_TRUE(Tree().Act(Bar(1)));
  EXPECT_EQ(takeTold().front(), "open Subject of a");
  EXPECT_TRUE(Tree().Act(Tree().ChildAt(Node(plan_.Elements().Toolbar1), 1).value()));
  EXPECT_EQ(plan_.DisplayedYear(), 2006);
  EXPECT_THAT(takeTold(), testing::Contains("children Year"));
  EXPECT_FALSE(Tree().Act(Node(plan_.Elements().lblDate)));
}

TEST_F(AccessibleYearTest, WhatIsScrolledAwayOrHiddenSaysSo) {
  std::vector<CalEvent> events;
  for (int i = 0; i < 200; ++i) {
    events.push_back(SampleEvent(std::to_string(i), At(2005, 1, 3), At(2005, 1, 5)));
  }
  Start();
  Refreshed(events);
  EXPECT_FALSE(Facts(Node(plan_.Elements().legend.txtEdit)).visible);
  EXPECT_TRUE(Facts(Node(plan_.Elements().VScroll1)).visible);
  const PixelRect first = Facts(Bar(0)).bounds;
  EXPECT_TRUE(Facts(Bar(0)).inSight);
  EXPECT_FALSE(Facts(Bar(199)).inSight);
  plan_.Elements().VScroll1.SetValue(plan_.Elements().VScroll1.Max());
  EXPECT_FALSE(Facts(Bar(0)).inSight);
  EXPECT_EQ(Facts(Bar(0)).bounds.top, first.top - plan_.Elements().VScroll1.Max());
  EXPECT_EQ(Facts(Node(plan_.Elements().VScroll1)).value, "100 %");
}

}  // namespace
}  // namespace velkor
