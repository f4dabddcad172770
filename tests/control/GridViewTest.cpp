// tests/control/GridViewTest.cpp: the grid painted, scrolled, pointed at and steered by keys.
#include "control/GridView.h"

#include "platform/headless/RecordingSurface.h"
#include "tests/control/PlannerCase.h"
#include "view/GridPainter.h"
#include "view/SelectionPainter.h"

namespace velkor {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class GridViewTest : public PlannerCase {
 protected:
  PictureBox& Pic1() { return plan_.Elements().pic1; }
  const std::string& Label() { return plan_.Elements().lblDate.Caption(); }
  static RecordingSurface Painted(const PictureBox& picture) {
    RecordingSurface surface;
    picture.onPaint(surface, {0, 0, picture.Bounds().Width(), picture.Bounds().Height()});
    return surface;
  }
  /// One bar of two days, so many times, from this day.
  static std::vector<CalEvent> Bars(int count, Date start) {
    std::vector<CalEvent> events;
    for (int i = 0; i < count; ++i) {
      events.push_back(SampleEvent(std::to_string(i), start, start.AddDays(2)));
    }
    return events;
  }
  Colour CategoryColour() { return plan_.Grid().Categories().All().back().colour; }
  /// Starts of the appointments that mnuNew shows in the inspector.
  std::vector<Date> StartsOfNew() {
    std::vector<Date> starts;
    inspect_ = [&](OutlookItem& item) { starts.push_back(item.Start()); };
    plan_.Elements().mnuNew.Click();
    return starts;
  }
};

TEST_F(GridViewTest, IsBlankUntilItIsLiveAndThenShowsBarsSelectionAndCursor) {
  plan_.Resize({15000, 9000}, {});
  EXPECT_EQ(Painted(Pic1()).Log().size(), 1u);
  Start();
  Refreshed(Bars(1, At(2005, 3, 8)));
  const Point bar = DayPoint(At(2005, 3, 9), 2);
  EXPECT_EQ(Painted(Pic1()).ColourAt(bar), CategoryColour());
  const Point free = DayPoint(At(2005, 3, 15), 3);
  EXPECT_EQ(Painted(Pic1()).ColourAt(free), grid_colours::Back);
  Drag(DayPoint(At(2005, 3, 7), 3), DayPoint(At(2005, 3, 16), 3));
  EXPECT_EQ(Painted(Pic1()).ColourAt(free), selection_colours::Fill);
  EXPECT_EQ(Painted(Pic1()).ColourAt(bar), CategoryColour()) << "bars stay readable";
  plan_.Elements().mnuClear.Click();
  EXPECT_EQ(Painted(Pic1()).ColourAt(free), grid_colours::Back);
  const std::size_t outlines = Painted(Pic1()).Calls("outline").size();
  Pic1().onKeyDown(Key::Right);
  EXPECT_GT(Painted(Pic1()).Calls("outline").size(), outlines);
}

TEST_F(GridViewTest, ScrolledItDrawsAndHearsWhatIsInSight) {
  Start();
  Refreshed(Bars(50'000, At(2005, 12, 20)));
  YearPlanElements& elements = plan_.Elements();
  ASSERT_TRUE(elements.VScroll1.Visible());
  EXPECT_EQ(elements.VScroll1.Bounds().left, Pic1().Bounds().right);
  CountingPeer grid;
  CountingPeer months;
  Pic1().Attach(&grid);
  elements.picHeadRow.Attach(&months);
  elements.VScroll1.SetValue(elements.VScroll1.Max());
  EXPECT_FALSE(grid.parts.empty() || months.parts.empty());
  Pic1().Attach(nullptr);
  elements.picHeadRow.Attach(nullptr);

  const Point last = DayPoint(At(2005, 12, 21), plan_.Grid().Layout().BandsOf(12));
  EXPECT_EQ(Painted(Pic1()).ColourAt(last), CategoryColour());
  Pic1().onMouseMove(last);
  EXPECT_THAT(Pic1().onToolTip(), StartsWith("Subject of 49999\n12/20/2005 to 12/21/2005"));
  EXPECT_THAT(Painted(elements.picHeadRow).Calls("text"),
              AllOf(Contains(HasSubstr("Dec")), Each(Not(HasSubstr("Jan")))));
  EXPECT_NEAR(last.y, Pic1().Bounds().Height(), 100) << "the last band ends with the surface";
  Refreshed({});
  EXPECT_FALSE(elements.VScroll1.Visible());
  EXPECT_EQ(elements.VScroll1.Value(), 0);
}

TEST_F(GridViewTest, TheWheelMovesWhatIsUnderAPointerThatRestsAndItsFineStepsAddUp) {
  Start();
  Refreshed(Bars(200, At(2005, 1, 3)));
  Pic1().onMouseMove(DayPoint(At(2005, 1, 3), 3));
  const std::string before = Pic1().onToolTip();
  EXPECT_THAT(before, StartsWith("Subject of 1\n"));
  Pic1().onMouseWheel(-2);
  EXPECT_THAT(Pic1().onToolTip(), AllOf(StartsWith("Subject of "), Not(before)));
  Pic1().onMouseWheel(100);
  for (int i = 0; i < 100; ++i) Pic1().onMouseWheel(-0.02);
  EXPECT_EQ(plan_.Elements().VScroll1.Value(), 6 * plan_.Elements().VScroll1.SmallChange());
}

TEST_F(GridViewTest, ASelectionIsRepaintedWhereItChangedAlone) {
  Start();
  const Point from = DayPoint(At(2005, 3, 14), 2);
  Pic1().onMouseMove(from);
  CountingPeer peer;
  Pic1().Attach(&peer);
  Pic1().onMouseDown(MouseButton::Left, from);
  ASSERT_EQ(peer.parts.size(), 1u);
  const GridGeometry& geometry = plan_.Grid().Geometry();
  EXPECT_NEAR(peer.parts[0].top, geometry.RowTop(plan_.Grid().Layout(), 3), 60);
  EXPECT_NEAR(peer.parts[0].Width(), geometry.ColumnWidth, 120);
  peer.parts.clear();
  Pic1().onMouseMove(DayPoint(At(2005, 3, 14), 3));
  EXPECT_THAT(peer.parts, IsEmpty()) << "the same day";
  Pic1().Attach(nullptr);
}

TEST_F(GridViewTest, DraggedDaysTakeANewAppointment) {
  Start();
  Drag(DayPoint(At(2005, 3, 14), 3), DayPoint(At(2005, 3, 10), 3));
  EXPECT_EQ(Label(), "Selected:  3/14/2005 to 3/10/2005");
  EXPECT_THAT(StartsOfNew(), testing::ElementsAre(At(2005, 3, 10)));
  EXPECT_THAT(StartsOfNew(), testing::SizeIs(1)) << "closed unsaved, the selection stays";
  inspect_ = [](OutlookItem& item) { item.Save(); };
  plan_.Elements().mnuNew.Click();
  EXPECT_THAT(StartsOfNew(), IsEmpty()) << "the days are taken";
}

TEST_F(GridViewTest, APressOnAMonthsNameSelectsTheMonth) {
  Start();
  const Point february{30, DayPoint(At(2005, 2, 1), 2).y};
  plan_.Elements().picHeadRow.onMouseDown(MouseButton::Left, february);
  EXPECT_EQ(Painted(Pic1()).ColourAt(DayPoint(At(2005, 2, 22), 3)), selection_colours::Fill);
  EXPECT_THAT(StartsOfNew(), testing::ElementsAre(At(2005, 2, 1)));
  // Where a press selects nothing, a menu elsewhere is for the day that it is called on.
  plan_.Elements().mnuSelectionNever.Click();
  Click(MouseButton::Right, DayPoint(At(2005, 5, 10), 3));
  EXPECT_THAT(StartsOfNew(), testing::ElementsAre(At(2005, 5, 10)));
  plan_.Elements().picHeadRow.onMouseDown(MouseButton::Left, february);
  EXPECT_THAT(StartsOfNew(), testing::ElementsAre(At(2005, 2, 1)));
}

TEST_F(GridViewTest, APressBesideTheGridSelectsAndOpensNothing) {
  calendar_.Add(SampleItem("0", At(2005, 1, 30), At(2005, 2, 1)));
  Start();
  Refreshed(Bars(1, At(2005, 1, 30)));
  Pic1().onMouseMove(DayPoint(At(2005, 1, 31), 3));
  Click(MouseButton::Left, {Pic1().Bounds().Width() - 10, DayPoint(At(2005, 2, 1), 2).y});
  EXPECT_THAT(StartsOfNew(), IsEmpty());
  inspect_ = [](OutlookItem&) { ADD_FAILURE() << "opened"; };
  Pic1().onMouseMove(DayPoint(At(2005, 1, 31), 2));
  Click(MouseButton::Left, {Pic1().Bounds().Width() - 10, DayPoint(At(2005, 2, 1), 2).y});
  Click(MouseButton::Right, {Pic1().Bounds().Width() - 10, DayPoint(At(2005, 2, 1), 2).y});
  EXPECT_FALSE(plan_.Elements().mnuNew.Enabled());
  Click(MouseButton::Right, DayPoint(At(2005, 2, 1), 3));
  EXPECT_TRUE(plan_.Elements().mnuNew.Enabled());
}

TEST_F(GridViewTest, TheMenusDayAndAppointmentGoWithTheirYear) {
  calendar_.Add(SampleItem("0", At(2005, 3, 8), At(2005, 3, 10)));
  Start();
  Refreshed(Bars(1, At(2005, 3, 8)));
  Click(MouseButton::Right, DayPoint(At(2005, 3, 8), 2));
  AnswerEveryStop();
  plan_.ChangeYear(1);
  EXPECT_THAT(StartsOfNew(), IsEmpty());
  plan_.Elements().mnuDelete.Click();
  EXPECT_THAT(calendar_.AllItems(), testing::SizeIs(2));
}

TEST_F(GridViewTest, TheToolTipNamesAnAppointmentWhereAClickOpensIt) {
  Start();
  std::vector<CalEvent> events = Bars(1, At(2005, 3, 8));
  events[0].Categories = "Leave";
  events.push_back(SampleEvent("timed", At(2005, 4, 5, 9), At(2005, 4, 5, 10, 30)));
  Refreshed(events);
  Pic1().onMouseMove(DayPoint(At(2005, 3, 8), 2));
  EXPECT_EQ(Pic1().onToolTip(), "Subject of 0\n3/8/2005 to 3/9/2005\nLeave");
  EXPECT_EQ(Label(), "Date:  3/8/2005") << "also over a bar";
  Pic1().onMouseMove(DayPoint(At(2005, 4, 5), 2));
  EXPECT_EQ(Pic1().onToolTip(), "Subject of timed\n4/5/2005 9:00:00 AM to 10:30:00 AM");
  Pic1().onMouseMove(DayPoint(At(2005, 4, 5), 3));
  EXPECT_EQ(Pic1().onToolTip(), "");
  plan_.Elements().mnuSelectionAlways.Click();
  Pic1().onMouseMove(DayPoint(At(2005, 3, 8), 2));
  EXPECT_EQ(Pic1().onToolTip(), "") << "a click selects the day";
}

TEST_F(GridViewTest, TheKeyboardMovesADayCursor) {
  Start();
  EXPECT_FALSE(Pic1().onKeyDown(Key::Enter)) << "no day is pointed at";
  Pic1().onKeyDown(Key::Right);
  EXPECT_EQ(Label(), "Date:  4/18/2005") << "the first key shows today";
  Pic1().onKeyDown(Key::Left);
  EXPECT_EQ(Label(), "Date:  4/17/2005");
  Pic1().onKeyDown(Key::Down);
  EXPECT_EQ(Label(), "Date:  5/22/2005") << "the same weekday";
  Pic1().onKeyDown(Key::End);
  EXPECT_EQ(Label(), "Date:  5/31/2005");
  Pic1().onKeyDown(Key::Right);
  EXPECT_EQ(Label(), "Date:  6/1/2005");
  Pic1().onKeyDown(Key::Up);
  Pic1().onKeyDown(Key::Home);
  EXPECT_EQ(Label(), "Date:  5/1/2005");
  for (int i = 0; i < 20; ++i) Pic1().onKeyDown(Key::Up);
  EXPECT_EQ(Label(), "Date:  1/1/2005");
  Pic1().onKeyDown(Key::Left);
  EXPECT_EQ(Label(), "Date:  1/1/2005") << "never out of the span";
  AnswerEveryStop();
  Pic1().onKeyDown(Key::PageDown);
  EXPECT_EQ(plan_.DisplayedYear(), 2006);
  EXPECT_EQ(Label(), "Date:  1/1/2006");
}

TEST_F(GridViewTest, TheCursorIsScrolledIntoSight) {
  Start();
  Refreshed(Bars(400, At(2005, 3, 8)));
  Pic1().onKeyDown(Key::Right);
  const auto inSight = [&](int row) {
    const GridGeometry& geometry = plan_.Grid().Geometry();
    const Twips top =
        geometry.RowTop(plan_.Grid().Layout(), row) - plan_.Elements().VScroll1.Value() * 15.0;
    return top >= -15 && top < Pic1().Bounds().Height();
  };
  EXPECT_TRUE(inSight(4));
  for (int i = 0; i < 8; ++i) Pic1().onKeyDown(Key::Down);
  EXPECT_TRUE(inSight(12));
  for (int i = 0; i < 11; ++i) Pic1().onKeyDown(Key::Up);
  EXPECT_TRUE(inSight(1));
}

TEST_F(GridViewTest, KeysOpenAndDeleteTheAppointmentThatIsNamed) {
  for (const char* id : {"a", "b"}) calendar_.Add(SampleItem(id, At(2005, 4, 18), At(2005, 4, 19)));
  calendar_.Add(SampleItem("long", At(2005, 4, 17), At(2005, 4, 30)));
  const CalEvent a = SampleEvent("a", At(2005, 4, 18), At(2005, 4, 19));
  const CalEvent b = SampleEvent("b", At(2005, 4, 18), At(2005, 4, 19));
  Start();
  AnswerEveryStop();
  Refreshed({a, b});
  Pic1().onKeyDown(Key::Right);
  EXPECT_EQ(Label(), "Date:  4/18/2005  Subject of a (1 of 2)");
  Pic1().onKeyDown(Key::Space);
  EXPECT_EQ(plan_.Elements().lblDate.Description(), "Date:  4/18/2005  Subject of b (2 of 2)");
  plan_.Elements().Command1.Click();
  Refreshed({SampleEvent("long", At(2005, 4, 17), At(2005, 4, 30)), a, b});
  EXPECT_EQ(Label(), "Date:  4/18/2005  Subject of b (3 of 3)");
  std::string shown;
  inspect_ = [&](OutlookItem& item) { shown = item.Subject(); };
  Pic1().onKeyDown(Key::Enter);
  EXPECT_EQ(shown, "Subject of b");
  messages_.Expect("Delete this appointment Subject of b?", MessageAnswer::Yes);
  Pic1().onKeyDown(Key::Delete);
  EXPECT_EQ(Label(), "Date:  4/18/2005  Subject of long (1 of 2)");
}

TEST_F(GridViewTest, TheMenuKeyCallsTheMenuForTheCursorsDay) {
  Start();
  CountingPeer menu;
  plan_.Elements().mnuPop.Attach(&menu);
  Pic1().onKeyDown(Key::Menu);
  ASSERT_EQ(menu.popUps.size(), 1u);
  EXPECT_TRUE(menu.popUps[0].y > Pic1().Bounds().top && menu.popUps[0].x > Pic1().Bounds().left);
  EXPECT_FALSE(plan_.Elements().mnuEdit.Enabled());
  EXPECT_TRUE(plan_.Elements().mnuClear.Enabled()) << "the day is selected";
  EXPECT_THAT(StartsOfNew(), testing::ElementsAre(At(2005, 4, 18)));
  Pic1().onKeyDown(Key::Right);
  Pic1().onKeyDown(Key::Menu);
  EXPECT_THAT(StartsOfNew(), testing::ElementsAre(At(2005, 4, 19)));
  plan_.Elements().mnuPop.Attach(nullptr);
}

}  // namespace
}  // namespace velkor
