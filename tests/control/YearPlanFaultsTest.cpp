// tests/control/YearPlanFaultsTest.cpp: what goes wrong half-way, and what comes in between.
#include "control/YearPlan.h"

#include <pthread.h>

#include <algorithm>

#include "model/Status.h"
#include "tests/control/PlannerCase.h"
#include "tests/model/RefreshDoubles.h"

namespace velkor {
namespace {

using testing::IsEmpty;

class YearPlanFaultsTest : public PlannerCase {};

class ReactingHost : public ControlHost {
 public:
  std::function<void(std::string_view)> onStatus;
  void PropertyChanged(std::string_view) override {}
  void StatusChange(std::string_view Msg) override {
    if (onStatus) onStatus(Msg);
  }
};

TEST_F(YearPlanFaultsTest, AYearChangeThatFailsKeepsTheYearAndItsCacheFile) {
  Start();
  Refreshed({EventA});
  seams_.environment.failing = "TMP";
  messages_.Expect("Error changing the year 76 TMP was refused.");
  plan_.Elements().Toolbar1.ClickButton("Next");
  seams_.environment.failing.clear();
  EXPECT_EQ(plan_.Elements().lblSelectedYear.Caption(), "Year 2005");
  EXPECT_EQ(plan_.Grid().Layout().bars.size(), 1u);
  plan_.RefreshSoon();
  plan_.Elements().tmrBackground.Tick();
  EXPECT_EQ(seams_.cacheUtilities.started.back().viewYear, 2005);
}

TEST_F(YearPlanFaultsTest, AYearThatTheHostChangesDuringALoadHasItsOwnEvents) {
  Start();
  seams_.files.contents[seams_.cacheUtilities.started.back().cacheFile] = Records({EventA});
  AnswerEveryStop();
  // A load reports its begin and its end.
  for (const int report : {1, 2}) {
    ReactingHost host;
    YearPlan plan(On(outlook_), host);
    plan.ReadProperties(bag_);
    plan.Elements().tmrStart.Tick();
    ASSERT_EQ(plan.Grid().Events().Count(), 1u);
    seams_.cacheUtilities.Complete(6);
    int cleared = 0;
    host.onStatus = [&](std::string_view message) {
      if (message.empty() && ++cleared == report) plan.ChangeYear(1);
    };
    plan.ChangeYear(0);
    EXPECT_EQ(plan.DisplayedYear(), 2006);
    EXPECT_EQ(plan.Grid().Events().Count(), 0u) << "report " << report;
  }
}

TEST_F(YearPlanFaultsTest, WhatChangesWhileAnAppointmentIsReadCountsForIt) {
  for (const bool otherYear : {true, false}) {
    OpenMessageBoxes boxes;
    YearPlan plan(seams_.On(outlook_, boxes), host_);
    Start(plan);
    AnswerEveryStop();
    outlook_.failing = "GetNext";
    boxes.whileOpen = [&] {
      outlook_.failing.clear();
      otherYear ? plan.ChangeYear(1) : plan.CatDelete("Unused 01");
    };
    CalendarItem item = SampleItem(otherYear ? "a" : "b", At(2005, 3, 3), At(2005, 3, 5));
    calendar_.SaveNew(std::move(item), false, At(2005, 1, 1));
    plan.Elements().tmrItems.Tick();
    EXPECT_EQ(plan.DisplayedYear(), otherYear ? 2006 : 2005);
    ASSERT_EQ(plan.Grid().Events().Count(), otherYear ? 0u : 1u);
    if (otherYear) continue;
    EXPECT_EQ(plan.Grid().Events()[0].CatIndex, plan.Grid().Categories().Count());
  }
}

TEST_F(YearPlanFaultsTest, ASecondStartWithoutItsFolderLeavesTheControlEmpty) {
  Start();
  Refreshed({EventA});
  AnswerEveryStop();
  Drag(DayPoint(At(2005, 3, 10), 3), DayPoint(At(2005, 3, 14), 3));
  bag_.values["Folder"] = std::string("Mailbox\\Gone");
  plan_.Elements().Command1.Click();
  EXPECT_EQ(plan_.Elements().imgLogo.FillColour(), status::Downloading);
  plan_.Set(&PlannerProperties::Folder, "Mailbox\\Gone");
  plan_.ChangeYear(0);
  EXPECT_EQ(plan_.Grid().Events().Count(), 1u) << "files are those of the folder on show";
  EXPECT_EQ(plan_.Elements().imgLogo.FillColour(), status::Downloading);
  messages_.Expect("Unable to access specified calendar folder.");
  Start(plan_);
  EXPECT_FALSE(plan_.IsLive());
  EXPECT_FALSE(plan_.Elements().tmrBackground.Enabled());
  EXPECT_EQ(plan_.Elements().imgLogo.FillColour(), status::Idle);
  EXPECT_EQ(plan_.Grid().Events().Count(), 0u);
  plan_.Elements().mnuNew.Click();
  EXPECT_THAT(calendar_.AllItems(), testing::SizeIs(1)) << "the colour record alone";
}

TEST_F(YearPlanFaultsTest, AStartWithoutACalendarIsMadeAgainByTheButtonAndSilentlyEachMinute) {
  const std::string failure = "Error while initialising the background processing, ";
  YearPlanElements& elements = plan_.Elements();
  const auto passMinutes = [&](int minutes) {
    for (int tick = 0; tick < 12 * minutes; ++tick) elements.tmrCalendar.Tick();
  };
  EXPECT_FALSE(elements.Command1.Enabled());
  outlook_.failing = "GetNamespace";
  messages_.Expect(failure);
  Start();
  EXPECT_TRUE(elements.Command1.Enabled());
  EXPECT_FALSE(elements.Toolbar1.Button("Next")->enabled);
  outlook_.calls.clear();
  passMinutes(3);
  EXPECT_THAT(outlook_.calls, testing::SizeIs(3));
  messages_.Expect(failure);
  elements.Command1.Click();
  passMinutes(1);
  outlook_.failing.clear();
  plan_.Set(&PlannerProperties::Folder, "Mailbox\\Team");
  passMinutes(1);
  messages_.Expect("Unable to access specified calendar folder.");
  elements.Command1.Click();
  EXPECT_FALSE(plan_.IsLive());
  root_.AddFolder("Team", "team", outlook::ItemTypeAppointment);
  passMinutes(1);
  EXPECT_TRUE(plan_.IsLive());
  EXPECT_EQ(seams_.cacheUtilities.started.size(), 1u);
  Refreshed({EventA});
  EXPECT_EQ(plan_.Grid().Events().Count(), 1u);
  outlook_.calls.clear();
  passMinutes(2);
  EXPECT_THAT(outlook_.calls, IsEmpty());
}

TEST_F(YearPlanFaultsTest, ACalendarProgramThatEndedIsConnectedToOnceItRunsAgain) {
  Start();
  Refreshed({EventA});
  AnswerEveryStop();
  Timer& tmrCalendar = plan_.Elements().tmrCalendar;
  // The colours that the start saved.
  plan_.Elements().tmrItems.Tick();
  const auto save = [&](const char* id) {
    calendar_.SaveNew(SampleItem(id, At(2005, 4, 3), At(2005, 4, 5)), false, At(2005, 1, 1));
    plan_.Elements().tmrItems.Tick();
  };
  outlook_.End();
  outlook_.calls.clear();
  for (int tick = 0; tick < 5; ++tick) tmrCalendar.Tick();
  save("unheard");
  EXPECT_EQ(plan_.Grid().Events().Count(), 1u);
  EXPECT_THAT(outlook_.calls, IsEmpty()) << "it is not started for this";

  outlook_.Begin();
  tmrCalendar.Tick();
  plan_.Elements().tmrItems.Tick();
  EXPECT_EQ(seams_.cacheUtilities.started.size(), 2u) << "what changed meanwhile was not told";
  EXPECT_THAT(outlook_.calls, testing::Contains("Find")) << "nor were the colours";
  save("heard");
  EXPECT_EQ(plan_.Grid().Events().Count(), 2u);

  // Whoever opens an appointment wants the program.
  calendar_.Add(SampleItem("a", At(2005, 3, 3), At(2005, 3, 5)));
  outlook_.End();
  std::string shown;
  inspect_ = [&](OutlookItem& item) { shown = item.Subject(); };
  Click(MouseButton::Right, DayPoint(At(2005, 3, 4), 2));
  plan_.Elements().mnuEdit.Click();
  EXPECT_EQ(shown, "Subject of a");
}

TEST_F(YearPlanFaultsTest, LeafingAsksTheCalendarProgramForNothing) {
  Start();
  AnswerEveryStop();
  outlook_.calls.clear();
  for (const bool ends : {false, true}) {
    if (ends) outlook_.End();
    for (int year = 0; year < 5; ++year) {
      seams_.files.contents[CacheFileOf(plan_.DisplayedYear() + 1)] = Records({SampleEvent(
          "a", At(plan_.DisplayedYear() + 1, 3, 3), At(plan_.DisplayedYear() + 1, 3, 5))});
      plan_.Elements().Toolbar1.ClickButton("Next");
      EXPECT_EQ(plan_.Grid().Layout().bars.size(), 1u);
    }
  }
  EXPECT_THAT(outlook_.calls, IsEmpty());
}

/// Runs steps on a stack that a few dozen calls within one another use up.
void OnSmallStack(const std::function<void()>& steps) {
  constexpr std::size_t SmallStack = std::size_t{192} << 10;
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, SmallStack);
  pthread_t thread{};
  const auto run = [](void* work) -> void* {
    (*static_cast<const std::function<void()>*>(work))();
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &attributes, run, const_cast<std::function<void()>*>(&steps)),
            0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

TEST_F(YearPlanFaultsTest, KeysHeldAndThousandsOfItemEventsNeverPileUp) {
  calendar_.Add(SampleItem("a", At(2005, 3, 3), At(2005, 3, 5)));
  Start();
  YearPlanElements& elements = plan_.Elements();
  int left = 10'000;
  int depth = 0;
  int deepest = 0;
  const auto arrive = [&] {
    elements.pic1.onKeyDown(left % 2 == 0 ? Key::PageDown : Key::PageUp);
    ItemChange change;
    change.location = std::to_string(left);
    calendar_.SaveChange("a", change, At(2005, 1, 1));
    if (left % 3 == 0) calendar_.Delete(calendar_.SaveNew({}, false, At(2005, 1, 1))->entryId);
    elements.tmrItems.Tick();
    --left;
  };
  // Each round brings more; the utility takes some rounds to stop.
  seams_.shell.onMessages = [&](int round) {
    deepest = std::max(deepest, ++depth);
    for (int i = 0; i < 2 && left > 0; ++i) arrive();
    if (round % 5 == 0) seams_.cacheUtilities.Complete(6);
    --depth;
  };
  int turns = 0;
  OnSmallStack([&] {
    for (; left > 0; ++turns) arrive();
  });
  EXPECT_LE(deepest, 2);
  EXPECT_GT(turns, 100) << "the loop around the control never gets its turn";
  elements.tmrItems.Tick();
  EXPECT_FALSE(elements.tmrItems.Enabled());
  EXPECT_EQ(seams_.cacheUtilities.started.back().viewYear, plan_.DisplayedYear());
  const std::size_t started = seams_.cacheUtilities.started.size();
  Refreshed({EventA});
  elements.tmrBackground.Tick();
  EXPECT_EQ(seams_.cacheUtilities.started.size(), started) << "one refresh at the end";
}

TEST_F(YearPlanFaultsTest, AWarmCacheIsShownThoughTheColoursCannotBeRead) {
  Start();
  Refreshed({EventA});
  YearPlan second(On(outlook_), host_);
  outlook_.failing = "Find";
  messages_.Expect("Error fetching category colours 440 ");
  Start(second);
  EXPECT_EQ(second.Grid().Layout().bars.size(), 1u);
  EXPECT_EQ(second.Grid().Categories().Count(), 15);
}

TEST_F(YearPlanFaultsTest, AControlOfAnySizeTakesPointerAndKeysAndIsPainted) {
  Start();
  std::vector<CalEvent> events;
  for (int i = 0; i < 40; ++i) {
    events.push_back(SampleEvent(std::to_string(i), At(2005, 1, 3), At(2005, 1, 5)));
  }
  Refreshed(events);
  YearPlanElements& elements = plan_.Elements();
  for (const double size : {0.0, 15.0, 300.0, 900.0, 1500.0, 3000.0}) {
    plan_.Resize({size, size}, {});
    for (PictureBox* box : {&elements.pic1, &elements.picHeadCol, &elements.picHeadRow,
                            &elements.picParent, &elements.legend.picCats}) {
      EXPECT_GE(box->Bounds().Width(), 0) << box->Name() << " at " << size;
      EXPECT_GE(box->Bounds().Height(), 0) << box->Name() << " at " << size;
    }
    Drag({-20, -20}, {80, 30});
    for (const Key key : {Key::Left, Key::Down, Key::End, Key::Menu}) elements.pic1.onKeyDown(key);
    elements.VScroll1.SetValue(elements.VScroll1.Max());
    RecordingSurface surface;
    const Rect whole{0, 0, elements.pic1.Bounds().Width(), elements.pic1.Bounds().Height()};
    elements.pic1.onPaint(surface, whole);
    EXPECT_EQ(surface.Depth(), 0U);
  }
}

TEST_F(YearPlanFaultsTest, TheStripLeavesOutTheDateLastAndPutsNothingUponAnother) {
  YearPlanElements& elements = plan_.Elements();
  for (int width = 3000; width < 15000; width += 15) {
    plan_.Resize({static_cast<double>(width), 9000}, {});
    EXPECT_LE(elements.Command1.Visible(), elements.lblDate.Visible()) << width;
    Twips left = 0;
    for (const Element* element : std::initializer_list<Element*>{
             &elements.Toolbar1, &elements.lblSelectedYear, &elements.lblDate, &elements.Command1,
             &elements.imgLogo}) {
      if (!element->Visible()) continue;
      EXPECT_GE(element->Bounds().left, left) << element->Name() << " at " << width;
      left = element->Bounds().right;
    }
  }
  EXPECT_TRUE(elements.Command1.Visible());
}

TEST_F(YearPlanFaultsTest, ANarrowControlKeepsHalfItsWidthForTheGrid) {
  const std::pair<Twips, Twips> widths[] = {{15000, 12810}, {4400, 2210}, {4300, 2150}, {900, 450}};
  for (const auto& [width, legendLeft] : widths) {
    plan_.Resize({width, 9000}, {});
    EXPECT_EQ(plan_.Elements().legend.picCatView.Bounds().left, legendLeft) << width;
    EXPECT_LT(plan_.Elements().picParent.Bounds().right, legendLeft) << width;
  }
}

}  // namespace
}  // namespace velkor
