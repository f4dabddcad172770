// tests/control/YearPlanCategoriesTest.cpp: categories, filter, export and print as the
// control's user meets them.
#include "categories/dlgFilter.h"
#include "exchange/dlgSaveType.h"
#include "model/ColourRecord.h"
#include "platform/Forms.h"
#include "print/frmPrint.h"
#include "tests/control/PlannerCase.h"
#include "view/LegendPainter.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class YearPlanCategoriesTest : public PlannerCase {
 protected:
  /// A colour record of the title with these lines.
  void AddRecord(const std::string& title, const std::string& lines) {
    calendar_.Add(SampleRecord(colour_record::SubjectOf(title), Listed(lines)));
  }
  std::string BodyOf(const std::string& title) {
    for (const auto& item : calendar_.AllItems()) {
      if (item->fields.subject == colour_record::SubjectOf(title)) return item->fields.body;
    }
    return {};
  }
  static std::string Listed(const std::string& lines) {
    return "--DO NOT EDIT LIST MANUALLY--" + lines;
  }
  CalEvent Event(const std::string& id, const std::string& categories) {
    return SampleEvent(id, At(2005, 3, 3), At(2005, 3, 5), categories);
  }
  /// Category indices of the events in their order.
  std::vector<int> Indices() {
    std::vector<int> indices;
    for (const CalEvent& event : plan_.Grid().Events()) indices.push_back(event.CatIndex);
    return indices;
  }
  /// Presses the legend's row of a category.
  void SelectRow(int index) {
    LegendElements& legend = plan_.Elements().legend;
    legend.picCats.onMouseDown(MouseButton::Left, {300, LegendRowRect(index, 600).bottom - 90});
  }
};

TEST_F(YearPlanCategoriesTest, EveryCommandGivesTheEventsTheirCategoriesAnew) {
  AddRecord("Default", "\r\nWork|255\r\nOther|1");
  Start();
  Refreshed({Event("a", "Work"), Event("b", "Trips"), Event("c", "Work, Trips")});
  ASSERT_THAT(Indices(), ElementsAre(1, 2, 1));
  LegendElements& legend = plan_.Elements().legend;

  seams_.inputs.lines = {"Trips"};
  legend.mnuCatNew.Click();
  EXPECT_THAT(Indices(), ElementsAre(1, 2, 1));
  EXPECT_EQ(BodyOf("Default"), Listed("\r\nWork|255\r\nTrips|16711680\r\nOther|1"));

  const auto rename = [&](int row, const std::string& name, MessageAnswer answer) {
    messages_.Expect("all appointments of the calendar", answer);
    SelectRow(row);
    legend.mnuCatRename.Click();
    legend.txtEdit.SetText(name);
    EXPECT_FALSE(legend.txtEdit.onKeyPress(key_codes::Enter));
  };
  rename(1, "Office", MessageAnswer::Cancel);
  EXPECT_THAT(Indices(), ElementsAre(1, 2, 1));
  rename(1, "Office", MessageAnswer::No);
  EXPECT_THAT(Indices(), ElementsAre(3, 2, 2));
  rename(2, "Travel", MessageAnswer::Yes);
  EXPECT_THAT(Indices(), ElementsAre(3, 2, 2));
  EXPECT_EQ(plan_.Grid().Events()[2].Categories, "Work, Travel");

  plan_.CatDelete("no such");
  plan_.CatDelete("Travel");
  EXPECT_THAT(Indices(), ElementsAre(2, 2, 2));
  seams_.dialogs.colours = {Colour{77}};
  plan_.CatColour("Other");
  EXPECT_EQ(BodyOf("Default"), Listed("\r\nOffice|255\r\nOther|77"));
  EXPECT_EQ(plan_.Grid().Layout().bars.size(), 3u);
}

TEST_F(YearPlanCategoriesTest, ARefreshLeavesTheNameBeingEditedAlone) {
  Start();
  SelectRow(1);
  LegendElements& legend = plan_.Elements().legend;
  legend.mnuCatRename.Click();
  legend.txtEdit.SetText("Half a na");
  Refreshed({Event("a", "Work")});
  EXPECT_TRUE(legend.txtEdit.Visible());
  EXPECT_EQ(legend.txtEdit.Text(), "Half a na");
}

TEST_F(YearPlanCategoriesTest, WhatAnotherPlannerChangesIsSeenAndNotWrittenOver) {
  AddRecord("Default", "\r\nWork|255\r\nOther|1");
  Start();
  Refreshed({Event("a", "Mine")});
  YearPlan other(On(outlook_), host_);
  Start(other);
  seams_.inputs.lines = {"Mine"};
  other.Elements().legend.mnuCatNew.Click();
  EXPECT_THAT(Indices(), ElementsAre(2));
  plan_.CatDelete("Work");
  EXPECT_EQ(BodyOf("Default"), Listed("\r\nMine|16711680\r\nOther|1"));
}

TEST_F(YearPlanCategoriesTest, AChangedPropertyCountsFromTheNextCommand) {
  AddRecord("Default", "\r\nWork|255\r\nOther|1");
  Start();
  Refreshed({Event("a", "Nobody's")});
  plan_.Set(&PlannerProperties::HideNonCategoryItems, true);
  seams_.inputs.lines = {"New"};
  plan_.Elements().legend.mnuCatNew.Click();
  EXPECT_THAT(Indices(), ElementsAre(-1));
}

TEST_F(YearPlanCategoriesTest, ATitleThatChangesUnderTheColourPickerIsLeftAlone) {
  AddRecord("Default", "\r\nWork|255\r\nOther|1");
  AddRecord("Rooms", "\r\nWork|3\r\nHall|77\r\nOther|1");
  Start();
  seams_.dialogs.colours = {Colour{77}};
  seams_.dialogs.whileOpen = [&] { plan_.Set(&PlannerProperties::TitleName, "Rooms"); };
  plan_.CatColour("Work");
  EXPECT_EQ(BodyOf("Rooms"), Listed("\r\nWork|3\r\nHall|77\r\nOther|1"));
  EXPECT_EQ(BodyOf("Default"), Listed("\r\nWork|255\r\nOther|1"));
}

TEST_F(YearPlanCategoriesTest, AListThatCouldNotBeReadIsNeverWrittenOver) {
  AddRecord("Default", "\r\nWork|255\r\nbroken\r\nOther|1");
  messages_.Expect("Error fetching category colours 13 ");
  Start();
  messages_.Expect("Error fetching category colours 13 ");
  plan_.CatDelete("Work");
  EXPECT_EQ(BodyOf("Default"), Listed("\r\nWork|255\r\nbroken\r\nOther|1"));
  const auto record =
      embedded_.GetNamespace("MAPI")->GetItemFromID(colour_record::SubjectOf("Default"), "store");
  record->SetBody(Listed("\r\nWork|255\r\nOther|1"));
  record->Save();
  plan_.CatDelete("Work");
  EXPECT_EQ(BodyOf("Default"), Listed("\r\nOther|1"));
}

TEST_F(YearPlanCategoriesTest, AnotherTitleChangesItsOwnList) {
  AddRecord("Default", "\r\nWork|255\r\nOther|1");
  AddRecord("Rooms", "\r\nHall|3\r\nKitchen|4\r\nOther|1");
  Start();
  plan_.Set(&PlannerProperties::TitleName, "Rooms");
  plan_.CatDelete("Kitchen");
  EXPECT_EQ(BodyOf("Default"), Listed("\r\nWork|255\r\nOther|1"));
  EXPECT_EQ(BodyOf("Rooms"), Listed("\r\nHall|3\r\nOther|1"));
  EXPECT_THAT(plan_.GetStringList(), ElementsAre("Work", "Other", "Hall", "Other"));
}

TEST_F(YearPlanCategoriesTest, TheFilterOfATitleIsThereAtTheNextStart) {
  AddRecord("Default", "\r\nWork|255\r\nTrips|2\r\nOther|1");
  Start();
  Refreshed({Event("a", "Work"), Event("b", "Trips"), Event("c", "")});
  Toolbar& toolbar = plan_.Elements().Toolbar1;
  EXPECT_EQ(toolbar.Button("Filter")->toolTip, "Click to define a filter");
  EXPECT_EQ(toolbar.Button("Filter")->image, 4);
  seams_.forms.Expect("dlgFilter", [](Form& form) {
    auto& filter = dynamic_cast<dlgFilter&>(form);
    for (std::size_t i = 0; i < filter.lbCategories.Items().size(); ++i) {
      if (filter.lbCategories.Items()[i].text != "Other") filter.lbCategories.ToggleItem(i);
    }
    filter.OKButton.Click();
  });
  toolbar.ClickButton("Filter");
  EXPECT_EQ(seams_.shell.waitPointers, 0);
  EXPECT_EQ(toolbar.Button("Filter")->toolTip, "Active Filter: Trips OR Work");
  EXPECT_EQ(toolbar.Button("Filter")->image, 5);
  EXPECT_EQ(plan_.Grid().Layout().bars.size(), 2u);

  YearPlan again(On(outlook_), host_);
  again.Resize({15000, 9000}, {});
  Start(again);
  EXPECT_EQ(again.Elements().Toolbar1.Button("Filter")->toolTip, "Active Filter: Trips OR Work");
  EXPECT_EQ(again.Grid().Layout().bars.size(), 2u);
}

TEST_F(YearPlanCategoriesTest, AnExportReadsItsYearsAndLeavesTheDisplayedOne) {
  AddRecord("Default", "\r\nWork|255\r\nOther|1");
  CalendarItem item = SampleItem("a", At(2004, 3, 3), At(2004, 3, 5));
  item.fields.body = "what was said";
  calendar_.Add(std::move(item));
  Start();
  seams_.files.contents[CacheFileOf(2004)] =
      Records({SampleEvent("a", At(2004, 3, 3), At(2004, 3, 5))});
  Refreshed({Event("gone", "Work")});
  Timer& timer = plan_.Elements().tmrBackground;
  const auto choose = [](const std::string& from, const std::string& to) {
    return [=](Form& form) {
      auto& types = dynamic_cast<dlgSaveType&>(form);
      EXPECT_EQ(types.tbFrom.Text(), "1/1/2005");
      types.tbFrom.SetText(from);
      types.tbTo.SetText(to);
      types.OKButton.Click();
    };
  };
  seams_.forms.Expect("dlgSaveType", choose("1/6/2004", "2/6/2004"));
  seams_.dialogs.fileNames = {"/out/year.xml"};
  seams_.progress.onStep = [&](const ScriptedProgress::Step&) {
    EXPECT_FALSE(timer.Enabled());
    // A refresh that ends meanwhile does not start it.
    seams_.cacheUtilities.Complete(static_cast<short>(SynchResult::CacheWritten));
    EXPECT_FALSE(timer.Enabled());
    return true;
  };
  messages_.Expect("Velkor Data saved");
  plan_.Elements().Toolbar1.ClickButton("Save");
  EXPECT_THAT(seams_.files.contents["/out/year.xml"], HasSubstr("what was said"));
  EXPECT_TRUE(timer.Enabled());
  EXPECT_EQ(plan_.DisplayedYear(), 2005);
  EXPECT_EQ(plan_.Grid().Events().Count(), 1u);

  seams_.files.contents[CacheFileOf(2004)].pop_back();
  seams_.forms.Expect("dlgSaveType", choose("1/1/2004", "31/12/2004"));
  seams_.dialogs.fileNames = {"/out/half.xml"};
  messages_.Expect("Error whilst performing Export: 62 The year 2004 has no whole cache file");
  plan_.Elements().Toolbar1.ClickButton("Save");
  EXPECT_FALSE(seams_.files.contents.contains("/out/half.xml"));
  EXPECT_TRUE(timer.Enabled());
}

TEST_F(YearPlanCategoriesTest, AnExportRefreshesYearsThatNeverWereAndNamesOneThatCannotBe) {
  AddRecord("Default", "\r\nWork|255\r\nOther|1");
  calendar_.Add(SampleItem("a", At(2003, 3, 3), At(2003, 3, 5)));
  Start();
  Refreshed({});
  const auto exportYears = [&](short result, int stepsToEnd) {
    seams_.forms.Expect("dlgSaveType", [](Form& form) {
      auto& types = dynamic_cast<dlgSaveType&>(form);
      types.tbFrom.SetText("1/1/2003");
      types.OKButton.Click();
    });
    seams_.dialogs.fileNames = {"/out/years.xml"};
    seams_.files.contents.erase("/out/years.xml");
    seams_.cacheUtilities.started.clear();
    int steps = 0;
    seams_.progress.onStep = [=](const ScriptedProgress::Step&) mutable {
      return ++steps != stepsToEnd;
    };
    seams_.shell.onMessages = [this, result](int) {
      const RefreshInputs& inputs = seams_.cacheUtilities.started.back();
      if (result == 1) {
        seams_.files.contents[inputs.cacheFile] =
            inputs.viewYear == 2003 ? Records({SampleEvent("a", At(2003, 3, 3), At(2003, 3, 5))})
                                    : std::string();
      }
      seams_.cacheUtilities.Complete(result);
    };
    plan_.Elements().Toolbar1.ClickButton("Save");
    seams_.shell.onMessages = nullptr;
  };
  messages_.Expect(
      "Error whilst performing Export: 440 The year 2003 could not be refreshed: Error "
      "occured while fetching events.");
  exportYears(7, 0);
  // The second step is that of the wait.
  exportYears(1, 2);
  EXPECT_EQ(seams_.cacheUtilities.started.size(), 1u);
  EXPECT_FALSE(seams_.files.contents.contains("/out/years.xml"));
  messages_.Expect("Velkor Data saved");
  exportYears(1, 0);
  EXPECT_THAT(seams_.files.contents["/out/years.xml"], HasSubstr("2003-03-03T00:00:00"));
  EXPECT_EQ(seams_.cacheUtilities.started.size(), 2u) << "2005 has its file";
  EXPECT_EQ(seams_.cacheUtilities.started.front().folderId, "calendar");
  EXPECT_EQ(plan_.DisplayedYear(), 2005);
}

TEST_F(YearPlanCategoriesTest, TheImportNamesTheFile) {
  Start();
  seams_.dialogs.fileNames = {"C:\\data\\cats.txt"};
  messages_.Expect("To Do: C:\\data\\cats.txt");
  plan_.Elements().Toolbar1.ClickButton("Open");
}

TEST_F(YearPlanCategoriesTest, PrintsTheYearByThePropertiesAsTheyAreThen) {
  seams_.files.contents[CacheFileOf(2005)] = Records({Event("a", "")});
  Start();
  plan_.Set(&PlannerProperties::TitleName, "Team");
  plan_.Set(&PlannerProperties::DisplaySubject, true);
  seams_.forms.Expect("frmPrint", [&](Form& form) {
    auto& preview = dynamic_cast<frmPrint&>(form);
    const auto log = [&] { return dynamic_cast<RecordingSurface&>(preview.picTemp->Drawing()); };
    EXPECT_THAT(log().Calls("text"), testing::Contains(HasSubstr("\"Subject of a\"")));
    preview.Options().SetHeader("Ours");
    preview.OptionsChanged();
    EXPECT_THAT(log().Calls("text")[0], HasSubstr("Year 2005\\x0DOurs"));
  });
  plan_.Elements().Toolbar1.ClickButton(toolbar_keys::Print);
  EXPECT_EQ(seams_.settings.Get("Year Planner", "Printing", "TeamHeader", ""), "Ours");
  EXPECT_EQ(seams_.shell.waitPointers, 0);
  seams_.printer.Disappear();
  messages_.Expect("Error setting up the printer 68 ");
  plan_.Elements().Toolbar1.ClickButton(toolbar_keys::Print);
}

}  // namespace
}  // namespace velkor
