// tests/categories/CategoryCommandsTest.cpp: adding, renaming, deleting and recolouring categories.
#include "categories/CategoryCommands.h"

#include "model/ColourRecord.h"

#include "tests/categories/CategoryCase.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CategoryCommandsTest : public CategoryCase {};

class CategoryRenameTest : public CategoryCommandsTest {
 protected:
  CategoryRenameTest() {
    List({"Work", "Other"});
    shown_.carried = "Work, Home";
    int day = 1;
    for (const std::vector<std::string>& names : std::initializer_list<std::vector<std::string>>{
             {"Work"}, {"work", "Workshop"}, {"Home", "Work", "Other"}, {"Work"}}) {
      // In every year, once a week among them.
      CalendarItem item = SampleItem("", At(1999 + 5 * day, 3, day), At(1999 + 5 * day, 3, day));
      item.recurring = day == 3;
      item.fields.categories = names;
      ++day;
      Save(item);
    }
    commands_.Select(1);
  }
  /// Categories of the appointments, of each name the first letter.
  std::string Carried() {
    std::string all;
    for (const auto& item : calendar_.AllItems()) {
      if (colour_record::IsSubject(item->fields.subject)) continue;
      for (const std::string& name : item->fields.categories) all += name[0];
      all += ' ';
    }
    return all;
  }
};

TEST_F(CategoryRenameTest, AllAppointmentsTakeTheNewNameWhereTheUserWantsIt) {
  const struct {
    MessageAnswer answer;
    Names list;
    const char* carried;
  } cases[] = {{MessageAnswer::Cancel, {"Work", "Other"}, "W wW HWO W "},
               {MessageAnswer::No, {"Job", "Other"}, "W wW HWO W "},
               {MessageAnswer::Yes, {"Job", "Other"}, "J wW HJO J "}};
  for (const auto& [answer, list, carried] : cases) {
    List({"Work", "Other"});
    shown_.carried = "Work, Home";
    commands_.Select(1);
    messages_.Expect("\"Work\"", answer);
    commands_.Rename("Job");
    EXPECT_EQ(Listed(), list);
    EXPECT_EQ(Carried(), carried);
  }
  EXPECT_TRUE(IsSaved());
  EXPECT_EQ(shown_.table.At(1).colour, Colour{1});
  EXPECT_EQ(shown_.carried, "Job, Home");
  EXPECT_EQ(messages_.Shown()[0].buttons, MessageButtons::YesNoCancel);
  EXPECT_EQ(seams_.progress.steps.back(), (ScriptedProgress::Step{2, 3, "Subject of "}));
  // Nobody on show carries it: nothing is asked.
  commands_.Select(2);
  commands_.Rename("Rest");
  EXPECT_EQ(Listed(), (Names{"Job", "Rest"}));
}

TEST_F(CategoryRenameTest, WheneverItEndsEachAppointmentCarriesANameOfTheSavedList) {
  constexpr int Never = 9;
  for (const auto& [stop, carried] : {std::pair(0, "W wW HWO W "), std::pair(1, "N wW HWO W "),
                                      std::pair(Never, "N wW HNO N ")}) {
    const std::string name = "N" + std::to_string(stop);
    List({"Work", "Other"});
    commands_.Select(1);
    seams_.progress.onStep = [&](const ScriptedProgress::Step& step) {
      EXPECT_TRUE(IsSaved());
      EXPECT_EQ(Listed(), (Names{name, "Work", "Other"}));
      return step.total == 1 || step.done != stop;
    };
    if (stop != Never) messages_.Expect("The list keeps both");
    commands_.Rename(name, RenameReach::Appointments);
    EXPECT_EQ(Carried(), carried);
    EXPECT_TRUE(IsSaved());
  }
}

TEST_F(CategoryRenameTest, WhatCannotBeSavedOrCarriedLeavesTheAppointmentsAsTheyAre) {
  messages_.Expect("No appointment can carry the category \"A, B\"");
  commands_.Rename("A, B", RenameReach::Appointments);
  EXPECT_EQ(Listed(), (Names{"Work", "Other"}));
  calendar_.SetWriter(&writer_);
  writer_.refuses = true;
  messages_.Expect("Error saving category colours 440 The disk is full.");
  commands_.Rename("Job", RenameReach::Appointments);
  EXPECT_EQ(Carried(), "W wW HWO W ");
  EXPECT_THAT(writer_.written, IsEmpty());
  // A calendar that can do it at once is asked for no more.
  writer_.refuses = false;
  List({"Work", "Other"});
  commands_.Select(1);
  commands_.Rename("Job", RenameReach::Appointments);
  ASSERT_EQ(writer_.written.size(), 3U);
  EXPECT_EQ(writer_.written[1], "category Work to Job");
}

TEST_F(CategoryCommandsTest, WhatOthersSavedMeanwhileIsKept) {
  calendar_.SetWriter(&writer_);
  const auto others = [&](const Names& names) {
    List(names);
    EXPECT_TRUE(colours_.Save(shown_.title, shown_.table.All()));
  };
  const struct {
    std::function<void()> command;
    Names after;
  } cases[] = {
      {[&] { commands_.New(); }, {"X", "A", "B", "N", "C"}},
      {[&] { commands_.Rename("N"); }, {"X", "A", "N", "C"}},
      {[&] { commands_.CatDelete("B"); }, {"X", "A", "C"}},
      {[&] { commands_.Rename("X"); }, {"A", "B", "C"}},
  };
  for (const auto& [command, after] : cases) {
    others({"A", "B", "C"});
    commands_.Select(2);
    seams_.inputs.lines = {"N"};
    const std::vector<Category> shown = shown_.table.All();
    writer_.onRefresh = [&, once = true]() mutable {
      if (!std::exchange(once, false)) return;
      others({"X", "A", "B", "C"});
      shown_.table = CategoryTable(shown);
    };
    if (after.front() == "A") messages_.Expect("The category X already exists");
    command();
    EXPECT_EQ(Listed(), after);
    EXPECT_TRUE(after.front() == "A" || IsSaved());
  }
}

TEST_F(CategoryCommandsTest, ANameSelectsItsCategoryAndOnlyTheLastOneStays) {
  List({"A", "B", "C"});
  commands_.Select(3);
  commands_.CatDelete("unknown");
  EXPECT_EQ(commands_.Selected(), 3);
  EXPECT_FALSE(IsSaved());
  commands_.CatDelete("A");
  EXPECT_EQ(Listed(), (Names{"B", "C"}));
  EXPECT_EQ(commands_.Selected(), 0);
  commands_.CatDelete();
  commands_.Select(4);
  commands_.CatDelete();
  commands_.CatColour();
  EXPECT_THAT(seams_.dialogs.began, IsEmpty()) << "nothing is selected";
  EXPECT_EQ(Listed(), (Names{"B", "C"}));
  commands_.Select(2);
  commands_.CatDelete();
  EXPECT_TRUE(IsSaved());
  messages_.Expect("Cannot delete all the categories; at least one must be retained.");
  commands_.CatDelete("B");
  EXPECT_EQ(Listed(), Names{"B"});
}

TEST_F(CategoryCommandsTest, AColourOfAnotherIsRefusedUntilAFreeOneIsPicked) {
  List({"A", "B", "C"});
  seams_.dialogs.colours = {Colour{1}, Colour{3}, Colour{-9}};
  messages_.Expect("This colour has already been used.");
  messages_.Expect("This colour has already been used.");
  commands_.CatColour("B");
  EXPECT_EQ(shown_.table.At(2).colour, Colour{-9});
  EXPECT_TRUE(IsSaved());
  EXPECT_EQ(commands_.Selected(), 2);
  EXPECT_THAT(seams_.dialogs.began, ElementsAre(Colour{2}, Colour{2}, Colour{2}));
  EXPECT_EQ(messages_.Shown()[0].title, "Category Colour Picker");
  EXPECT_EQ(messages_.Shown()[0].icon, MessageIcon::Exclamation);
  commands_.CatColour();
  EXPECT_EQ(shown_.table.At(2).colour, Colour{-9}) << "the picker was cancelled";
}

TEST_F(CategoryCommandsTest, ATableReplacedWhileADialogIsOpenIsNotChangedForAnother) {
  for (const Names& others : {Names{"B", "A"}, Names{}, Names{"X", "A"}}) {
    List({"A", "B"});
    commands_.Select(1);
    seams_.dialogs.whileOpen = [&] { List(others); };
    seams_.dialogs.colours = {Colour{2}};
    commands_.CatColour();
    EXPECT_EQ(commands_.Selected(), 0);
    // Read again before the change: those on show were not the calendar's.
    List({"A", "B"});
    commands_.Select(1);
    shown_.known = [&] {
      List(others);
      return true;
    };
    commands_.CatDelete();
    commands_.Rename("N");
    EXPECT_EQ(Listed(), others);
    shown_.known = [] { return true; };
  }
  EXPECT_FALSE(IsSaved());
  List({"A", "B"});
  commands_.Select(2);
  seams_.dialogs.whileOpen = [&] { List({"C", "B", "D"}); };
  seams_.dialogs.colours = {Colour{77}};
  commands_.CatColour();
  EXPECT_EQ(Listed(), (Names{"C", "B", "D"}));
  EXPECT_EQ(shown_.table.At(2).colour, Colour{77}) << "the same category stands there";
}

TEST_F(CategoryCommandsTest, CategoriesThatAreNotKnownAreNeitherAskedForNorChanged) {
  List({"A", "B"});
  commands_.Select(1);
  shown_.known = [] { return false; };
  commands_.New();
  commands_.Rename("N");
  commands_.CatColour();
  commands_.CatDelete("A");
  EXPECT_THAT(seams_.inputs.asked, IsEmpty());
  EXPECT_THAT(seams_.dialogs.began, IsEmpty());
  EXPECT_EQ(Listed(), (Names{"A", "B"}));
  EXPECT_FALSE(IsSaved());
}

TEST_F(CategoryCommandsTest, ASaveThatFailsIsToldAndTheListStaysAsItWasChanged) {
  List({"A", "B"});
  calendar_.SetWriter(&writer_);
  writer_.refuses = true;
  messages_.Expect("Error saving category colours 440 The disk is full.");
  commands_.CatDelete("A");
  EXPECT_EQ(Listed(), Names{"B"});
  EXPECT_FALSE(IsSaved());
  writer_.refuses = false;
  seams_.inputs.lines = {"N"};
  commands_.New();
  EXPECT_EQ(Listed(), (Names{"N", "B"}));
  EXPECT_TRUE(IsSaved());
}

TEST_F(CategoryCommandsTest, MoreCategoriesThanATableHoldsAreRefused) {
  List(Names(CategoryTable::MostCategories, "A"));
  commands_.Select(2);
  seams_.inputs.lines = {"N"};
  messages_.Expect("Error adding a category 6 ");
  commands_.New();
  EXPECT_EQ(Listed(), Names(CategoryTable::MostCategories, "A"));
  EXPECT_EQ(commands_.Selected(), 2);
  EXPECT_FALSE(IsSaved());
}

}  // namespace
}  // namespace velkor
