// tests/control/YearPlanTest.cpp: properties, start-up, navigation, refresh and commands together.
#include "control/YearPlan.h"

#include "control/frmAbout.h"
#include "model/ColourRecord.h"
#include "model/Status.h"
#include "tests/control/PlannerCase.h"
#include "tests/support/ErrorOf.h"

namespace velkor {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class YearPlanTest : public PlannerCase {};

TEST_F(YearPlanTest, PropertiesAreReadInTheirOrderAndSavedUnderTheSameKeys) {
  bag_.values.clear();
  plan_.ReadProperties(bag_);
  EXPECT_THAT(bag_.read, ElementsAre("Folder", "AllEvents", "DisplaySubject", "TitleName",
                                     "HideNonCategoryItems", "AppointmentForm", "StartMonth"));
  EXPECT_EQ(plan_.Properties(),
            (PlannerProperties{"", false, false, "Default", false, "IPM.Appointment", 1}));
  EXPECT_THAT(host_.changed, IsEmpty());

  plan_.Set(&PlannerProperties::Folder, "Mailbox\\Team");
  plan_.Set(&PlannerProperties::AllEvents, true);
  plan_.Set(&PlannerProperties::DisplaySubject, true);
  plan_.Set(&PlannerProperties::TitleName, "Leave");
  plan_.Set(&PlannerProperties::HideNonCategoryItems, true);
  plan_.Set(&PlannerProperties::AppointmentForm, "IPM.Appointment.Leave");
  plan_.Set(&PlannerProperties::FirstMonth, std::int16_t{4});
  EXPECT_THAT(host_.changed, ElementsAre("Folder", "AllEvents", "DisplaySubject", "TitleName",
                                         "HideNonCategoryItems", "AppointmentForm", "StartMonth"));
  MemoryPropertyBag saved;
  plan_.WriteProperties(saved);
  EXPECT_EQ(saved.values, (decltype(saved.values){{"Folder", "Mailbox\\Team"},
                                                  {"AllEvents", true},
                                                  {"DisplaySubject", true},
                                                  {"TitleName", "Leave"},
                                                  {"HideNonCategoryItems", true},
                                                  {"AppointmentForm", "IPM.Appointment.Leave"},
                                                  {"StartMonth", std::int16_t{4}}}));
  YearPlan other(On(outlook_), host_);
  other.ReadProperties(saved);
  MemoryPropertyBag again;
  other.WriteProperties(again);
  EXPECT_EQ(again.values, saved.values);
}

TEST_F(YearPlanTest, AMonthThatIsNoneIsRefusedInTheBagTheFirstAndAWrongTypeThereTold) {
  EXPECT_THROW(plan_.Set(&PlannerProperties::FirstMonth, std::int16_t{13}), Error);
  EXPECT_THROW(plan_.Set(&PlannerProperties::FirstMonth, "April"), Error);
  for (const int month : {0, 13, -1}) {
    bag_.values["StartMonth"] = static_cast<std::int16_t>(month);
    plan_.ReadProperties(bag_);
    EXPECT_EQ(plan_.Properties().FirstMonth, 1) << month;
  }
  bag_.values["TitleName"] = std::string("Read before the fault");
  bag_.values["StartMonth"] = std::string("April");
  EXPECT_THROW(plan_.ReadProperties(bag_), Error);
  EXPECT_EQ(plan_.Properties().TitleName, "Default");
}

TEST_F(YearPlanTest, ATextThatIsTooLongIsRefusedAndTheLongestIsKept) {
  const std::pair<std::string PlannerProperties::*, std::size_t> limits[] = {
      {&PlannerProperties::Folder, 32'767},
      {&PlannerProperties::TitleName, 214},
      {&PlannerProperties::AppointmentForm, 255}};
  for (const auto& [member, longest] : limits) {
    // Each counts twice in UTF-16.
    std::string text(longest % 2, 'a');
    while (text.size() / 4 < longest / 2) text += "😀";
    plan_.Set(member, text);
    const std::string told =
        ErrorOf([&, each = member] { plan_.Set(each, text + "b"); }).Description();
    EXPECT_THAT(told, HasSubstr(std::to_string(longest) + " are the most."));
    EXPECT_EQ(plan_.Properties().*member, text);
    bag_.values[std::string(PropertyOf(member).key)] = text + "b";
    EXPECT_EQ(ErrorOf([&] { plan_.ReadProperties(bag_); }).Description(), told);
    bag_.values.clear();
  }
}

TEST_F(YearPlanTest, AUserWhoIsNotNamedIsAskedForOnceAndKnownByTheLogin) {
  seams_.environment.variables["USERNAME"] = "login";
  outlook_.failing = "CurrentUserName";
  Start();
  outlook_.failing.clear();
  outlook_.calls.clear();
  AnswerEveryStop();
  plan_.Elements().Toolbar1.ClickButton("Next");
  EXPECT_EQ(seams_.cacheUtilities.started.back().cacheFile, "/temp/login20060.tmp");
  EXPECT_THAT(outlook_.calls, Not(Contains("CurrentUserName")));
}

TEST_F(YearPlanTest, StartUpShowsTodaysYearFromTheCacheAndStartsTheFirstRefresh) {
  Start();
  const std::string cacheFile = seams_.cacheUtilities.started.at(0).cacheFile;
  YearPlan second(On(outlook_), host_);
  seams_.files.contents[cacheFile] = Records({EventA});
  outlook_.calls.clear();
  CountingPeer peer;
  std::size_t callsBeforeDrawing = 0;
  second.Elements().pic1.Attach(&peer);
  seams_.shell.onMessages = [&](int) {
    if (callsBeforeDrawing == 0) callsBeforeDrawing = outlook_.calls.size();
  };
  second.Resize({15000, 9000}, {});
  second.ReadProperties(bag_);
  EXPECT_TRUE(second.Elements().tmrStart.Enabled());
  second.Elements().tmrStart.Tick();

  EXPECT_FALSE(second.Elements().tmrStart.Enabled());
  EXPECT_EQ(second.Elements().lblSelectedYear.Caption(), "Year 2005");
  ASSERT_EQ(second.Grid().Events().Count(), 1u);
  EXPECT_EQ(second.Grid().Layout().bars.size(), 1u);
  EXPECT_FALSE(peer.parts.empty());
  // The folder, its item events and the colours; no appointment is asked for.
  EXPECT_EQ(callsBeforeDrawing, outlook_.calls.size());
  EXPECT_THAT(outlook_.calls,
              ElementsAre("GetNamespace", "GetDefaultFolder", "GetFolderFromID", "Items", "Connect",
                          "CurrentUserName", "GetNamespace", "GetFolderFromID", "Items", "Find"));
  const RefreshInputs& inputs = seams_.cacheUtilities.started.back();
  EXPECT_EQ(inputs.viewYear, 2005);
  EXPECT_EQ(inputs.firstMonth, 1);
  EXPECT_EQ(inputs.folderId, "calendar");
  EXPECT_EQ(inputs.storeId, "store");
  EXPECT_THAT(host_.statuses, Contains(std::string(status::MessageOf(status::Downloading))));
  EXPECT_EQ(second.Elements().imgLogo.FillColour(), status::Downloading);
  EXPECT_EQ(second.Elements().imgLogo.ToolTip(), status::MessageOf(status::Downloading));
  EXPECT_TRUE(second.Elements().tmrBackground.Enabled());
  second.Elements().pic1.Attach(nullptr);
}

TEST_F(YearPlanTest, TheSpanThatContainsTodayIsShownWhateverItsFirstMonth) {
  bag_.values["StartMonth"] = std::int16_t{7};
  Start();
  EXPECT_EQ(plan_.DisplayedYear(), 2004);
  EXPECT_EQ(plan_.Elements().lblSelectedYear.Caption(), "Year 2004");
  EXPECT_THAT(plan_.Description(), HasSubstr("July 2004 to June 2005: Year 2004/05 has no"));
}

TEST_F(YearPlanTest, WithoutTheFolderStartUpStopsAndTheControlStaysEmpty) {
  bag_.values["Folder"] = std::string("Mailbox\\Gone");
  messages_.Expect("Unable to access specified calendar folder.");
  Start();
  EXPECT_EQ(seams_.cacheUtilities.created, 0);
  EXPECT_FALSE(plan_.IsLive());
  plan_.Elements().Toolbar1.ClickButton("Next");
  EXPECT_EQ(plan_.DisplayedYear(), 2005);
  EXPECT_THAT(plan_.GetStringList(), IsEmpty());
}

TEST_F(YearPlanTest, AnErrorOfStartUpNamesItsStepAndKeepsWhatWasLoaded) {
  const std::string text =
      "Error while initialising the background processing, the cache file will not be updated from "
      "the calender (Step:";
  outlook_.failing = "GetNamespace";
  messages_.Expect(text + "1). \r\rError: 440 GetNamespace was refused.");
  Start();
  YearPlan second(On(outlook_), host_);
  outlook_.failing.clear();
  seams_.environment.failing = "TMP";
  messages_.Expect(text + "4). \r\rError: 76 TMP was refused.");
  Start(second);
  EXPECT_EQ(second.Elements().lblSelectedYear.Caption(), "Year 2005");

  seams_.environment.failing.clear();
  seams_.cacheUtilities.failsToCreate = true;
  YearPlan third(On(outlook_), host_);
  messages_.Expect(text + "10). \r\rError: 5 The cache utility cannot be created.");
  Start(third);
  EXPECT_TRUE(third.Elements().Command1.Enabled());
}

TEST_F(YearPlanTest, BackAndNextShowTheirYearFromItsCacheAndRefreshItAtOnce) {
  Start();
  const std::string of2005 = seams_.cacheUtilities.started.at(0).cacheFile;
  AnswerEveryStop();
  plan_.Elements().Toolbar1.ClickButton("Next");
  EXPECT_EQ(plan_.Elements().lblSelectedYear.Caption(), "Year 2006");
  EXPECT_EQ(seams_.cacheUtilities.stops, 1);
  const RefreshInputs of2006 = seams_.cacheUtilities.started.at(1);
  EXPECT_EQ(of2006.viewYear, 2006);
  EXPECT_NE(of2006.cacheFile, of2005);
  Refreshed({SampleEvent("a", At(2006, 3, 3), At(2006, 3, 5)),
             SampleEvent("b", At(2006, 3, 4), At(2006, 3, 6))});
  EXPECT_EQ(plan_.Grid().Layout().bars.size(), 2u);
  plan_.Elements().Toolbar1.ClickButton("Back");
  EXPECT_EQ(plan_.DisplayedYear(), 2005);
  EXPECT_EQ(plan_.Grid().Events().Count(), 0u);
  plan_.Elements().pic1.onKeyDown(Key::PageDown);
  EXPECT_EQ(plan_.Grid().Events().Count(), 2u);
}

TEST_F(YearPlanTest, NoYearBeyondTheCalendarIsShown) {
  Start();
  AnswerEveryStop();
  plan_.ChangeYear(9999 - 2005);
  EXPECT_EQ(plan_.DisplayedYear(), 9999);
  plan_.ChangeYear(1);
  EXPECT_EQ(plan_.DisplayedYear(), 9999);
}

TEST_F(YearPlanTest, OptionsCountFromTheNextDrawingOrLoad) {
  bag_.values["AllEvents"] = false;
  Start();
  Refreshed({SampleEvent("a", At(2005, 3, 3, 9), At(2005, 3, 3, 10))});
  EXPECT_EQ(plan_.Grid().Layout().bars.size(), 0u);
  plan_.Set(&PlannerProperties::AllEvents, true);
  EXPECT_EQ(plan_.Grid().Layout().bars.size(), 0u);
  plan_.Resize({14000, 9000}, {});
  EXPECT_EQ(plan_.Grid().Layout().bars.size(), 1u);
  plan_.Set(&PlannerProperties::HideNonCategoryItems, true);
  EXPECT_EQ(plan_.Grid().Events()[0].CatIndex, plan_.Grid().Categories().Count());
  plan_.ChangeYear(0);
  EXPECT_EQ(plan_.Grid().Events()[0].CatIndex, -1);
  EXPECT_EQ(plan_.Grid().Layout().bars.size(), 0u);
  plan_.Set(&PlannerProperties::HideNonCategoryItems, false);
  plan_.ChangeYear(0);
  EXPECT_EQ(plan_.Grid().Layout().bars.size(), 1u);
}

TEST_F(YearPlanTest, AnItemThatArrivesDuringARefreshIsSavedAndTheRefreshBegunAnew) {
  Start();
  ASSERT_EQ(seams_.cacheUtilities.started.size(), 1u);
  AnswerEveryStop();
  calendar_.SaveNew(SampleItem("a", At(2005, 3, 3), At(2005, 3, 5)), false, At(2005, 1, 1));
  plan_.Elements().tmrItems.Tick();
  EXPECT_EQ(plan_.Grid().Events().Count(), 1u);
  EXPECT_EQ(seams_.cacheUtilities.stops, 1);
  EXPECT_EQ(seams_.cacheUtilities.started.size(), 2u);
  const RefreshInputs inputs = seams_.cacheUtilities.started[1];
  EXPECT_FALSE(seams_.files.contents[inputs.cacheFile].empty());

  seams_.cacheUtilities.Complete(6);
  for (const std::size_t refreshes : {2u, 3u}) {
    calendar_.SaveNew(SampleItem("b", At(2005, 3, 3), At(2005, 3, 5)), false, At(2005, 1, 1));
    plan_.Elements().tmrItems.Tick();
    EXPECT_EQ(seams_.cacheUtilities.started.size(), refreshes) << "a file that stays needs one";
    seams_.files.fail.open.insert(inputs.workFile);
  }
}

TEST_F(YearPlanTest, TheMenuActsOnTheAppointmentItWasCalledFor) {
  calendar_.Add(SampleItem("a", At(2005, 3, 3), At(2005, 3, 5)));
  Start();
  Refreshed({EventA});
  YearPlanElements& elements = plan_.Elements();
  CountingPeer menu;
  elements.mnuPop.Attach(&menu);
  Click(MouseButton::Right, DayPoint(At(2005, 3, 8), 2));
  EXPECT_FALSE(elements.mnuDelete.Enabled() || elements.mnuEdit.Enabled());
  EXPECT_TRUE(elements.mnuClear.Enabled() && elements.mnuNew.Enabled());
  Click(MouseButton::Right, DayPoint(At(2005, 3, 4), 2));
  EXPECT_TRUE(elements.mnuDelete.Enabled() && elements.mnuEdit.Enabled());
  EXPECT_EQ(menu.popUps.size(), 2u);

  messages_.Expect("Delete this appointment Subject of a?", MessageAnswer::Yes);
  elements.mnuDelete.Click();
  EXPECT_EQ(plan_.Grid().Events().Count(), 0u);
  EXPECT_THAT(calendar_.AllItems(), testing::SizeIs(1)) << "the colour record stays";
  elements.mnuPop.Attach(nullptr);
}

TEST_F(YearPlanTest, TheAboutBoxTellsTheProductAndOpensTheMakersPage) {
  Start();
  seams_.forms.Expect("frmAbout", [&](Form& form) {
    auto& about = dynamic_cast<frmAbout&>(form);
    EXPECT_THAT(about.lblHeading.Caption(), HasSubstr("YearPlan"));
    EXPECT_THAT(about.lblVersion.Caption(), HasSubstr("build"));
    about.lblHeading.Click();
    about.imgLogo.Click();
    about.cmdOK.Click();
    EXPECT_FALSE(form.IsOpen());
  });
  plan_.Elements().mnuAbout.Click();
  EXPECT_EQ(seams_.shell.pages.size(), 2u);
  plan_.Elements().mnuHelp.Click();
  EXPECT_EQ(seams_.shell.pages.back(), "help.html");
}

TEST_F(YearPlanTest, TheChosenSelectionModeIsCheckedAndKept) {
  calendar_.Add(SampleItem("a", At(2005, 3, 3), At(2005, 3, 5)));
  Start();
  Refreshed({EventA});
  YearPlanElements& elements = plan_.Elements();
  EXPECT_TRUE(elements.mnuSelectionAutomatic.Checked());
  elements.mnuSelectionAlways.Click();
  EXPECT_FALSE(elements.mnuSelectionAutomatic.Checked());
  EXPECT_TRUE(elements.mnuSelectionAlways.Checked());
  Click(MouseButton::Left, DayPoint(At(2005, 3, 3), 2));
  EXPECT_THAT(elements.lblDate.Caption(), HasSubstr("3/3/2005")) << "selected, not opened";
}

TEST_F(YearPlanTest, TheMarkOfTodayMovesAtMidnight) {
  Start();
  CountingPeer peer;
  plan_.Elements().pic1.Attach(&peer);
  plan_.Elements().tmrBackground.Tick();
  EXPECT_TRUE(peer.parts.empty());
  seams_.clock.Advance(86400);
  plan_.Elements().tmrBackground.Tick();
  EXPECT_FALSE(peer.parts.empty());
  plan_.Elements().pic1.Attach(nullptr);
}

}  // namespace
}  // namespace velkor
