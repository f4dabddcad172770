// tests/exchange/XmlExportTest.cpp: what is exported, and what becomes of the file when it fails.
#include "exchange/XmlExport.h"

#include <gmock/gmock.h>

#include "exchange/CategoryImport.h"
#include "exchange/dlgSaveType.h"
#include "platform/headless/HeadlessSeams.h"
#include "tests/model/SampleEvents.h"
#include "tests/support/ErrorOf.h"
#include "tools/GivenYears.h"
#include "values/Text.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr const char* FileName = "C:\\out\\data.xml";
constexpr const char* OlderFile = "older";

CalEvent EventOf(std::string id, std::string subject, Date start, std::int16_t catIndex = 1) {
  CalEvent event = SampleEvent(std::move(id), start, start.AddDays(1), "Work");
  event.Subject = std::move(subject);
  event.CatIndex = catIndex;
  return event;
}

/// Notes when reading begins and ends.
class NotedYears : public GivenYears {
 public:
  std::string notes;
  bool failsAtEnd = false;

  int DisplayedYear() const override { return 2026; }
  std::optional<EventCollection> EventsOf(int viewYear,
                                          const std::function<bool()>& goesOn) override {
    notes += std::to_string(viewYear) + " ";
    return GivenYears::EventsOf(viewYear, goesOn);
  }
  void BeginReadingYears() override { notes += "begin "; }
  void EndReadingYears() override {
    notes += "end";
    if (failsAtEnd) throw Error(5, "no end");
  }
};

class XmlExportCase : public testing::Test {
 protected:
  XmlExportCase() {
    source_.categories = CategoryTable({{"Work", Colour{255}}});
    source_.AddItem("A", "body", "place");
    seams_.files.contents[FileName] = OlderFile;
  }
  /// An event on each of so many days.
  static std::vector<CalEvent> Days(int count) {
    std::vector<CalEvent> events;
    for (int day = 0; day < count; ++day) {
      events.push_back(EventOf("A", "Shown", Date::FromYmd(2026, 1, 1).AddDays(day)));
    }
    return events;
  }
  /// Events whose items are there, unless they were given another identifier.
  void Give(int year, std::vector<CalEvent> events) {
    source_.years[year] = EventCollection(std::move(events));
  }
  ExportOutcome Write(const ExportChoice& choice) {
    return XmlExport(source_, platform_).Write(FileName, choice);
  }
  std::string Exported(const ExportChoice& choice) {
    seams_.messages.Expect("Velkor Data saved");
    EXPECT_EQ(Write(choice), ExportOutcome::Saved);
    return File();
  }
  std::string File() const {
    const auto found = seams_.files.contents.find(FileName);
    return found == seams_.files.contents.end() ? "no file" : found->second;
  }
  /// Runs the whole command with a click on what is chosen, and the name of a file.
  void Run(const std::function<void(dlgSaveType&)>& steps, const std::string& fileName = FileName) {
    seams_.forms.Expect("dlgSaveType",
                        [&](Form& form) { steps(dynamic_cast<dlgSaveType&>(form)); });
    seams_.dialogs.fileNames = {fileName};
    XmlExport(source_, platform_).Run();
  }

  NotedYears source_;
  HeadlessSeams seams_;
  Platform platform_ = seams_.On(source_.Outlook());
  const ExportChoice ThisYear{.firstYear = 2026, .lastYear = 2026};
};

TEST_F(XmlExportCase, AnAppointmentOfTwoYearsStandsTwiceHoweverLongItsTextsAre) {
  const std::string place(2'000'000, 'x');
  source_.AddItem("long", "body", place);
  const CalEvent both = EventOf("long", "Shown", Date::FromYmd(2005, 2, 3));
  Give(2004, {both});
  Give(2005, {both, EventOf("B", "no category", Date::FromYmd(2005, 2, 3), -1)});
  const std::string file = Exported({.firstYear = 2003, .lastYear = 2005});
  EXPECT_EQ(Split(file, "\t\t\t<Location><![CDATA[" + place + "]]></Location>\r\n").size(), 3U);
  EXPECT_EQ(Split(file, "<Subject>").size(), 3U);
  EXPECT_EQ(source_.notes, "begin 2003 2004 2005 end");
}

TEST_F(XmlExportCase, ChangesOfTheViewWhileMessagesAreProcessedDoNotReachTheExport) {
  std::vector<CalEvent> events = Days(40);
  CalEvent hidden = EventOf("gone", "Hidden", Date::FromYmd(2026, 12, 1));
  hidden.Categories = "Home";
  events.push_back(hidden);
  Give(2026, std::move(events));
  source_.filter.SetCategoryFilter("Work");
  seams_.progress.onStep = [&](const auto& step) {
    source_.filter.SetCategoryFilter("");
    source_.categories = CategoryTable();
    if (step.done > 0) source_.years.clear();
    return true;
  };
  const std::string file = Exported(ThisYear);
  EXPECT_THAT(file, HasSubstr("2026-02-09T00:00:00</StartDateTime>"));
  EXPECT_THAT(file, Not(HasSubstr("Hidden")));
}

TEST_F(XmlExportCase, AnAppointmentThatCannotBeFetchedIsNamedAndTheOlderFileStays) {
  Give(2026, {EventOf("A", "Here", Date::FromYmd(2026, 5, 1)),
              EventOf("gone", "Gone", Date::FromYmd(2026, 5, 1))});
  source_.failsAtEnd = true;
  seams_.messages.Expect("Error whilst performing Export: 440 ");
  Run([](dlgSaveType& form) { form.OKButton.Click(); });
  EXPECT_THAT(seams_.messages.Shown().back().text, testing::EndsWith("(\"Gone\", 2026-05-01)"));
  EXPECT_EQ(File(), OlderFile);
  EXPECT_EQ(source_.notes, "begin 2026 end");
  EXPECT_EQ(seams_.progress.open, 0);
}

TEST_F(XmlExportCase, CancelledProgressLeavesTheOlderFileWithoutAWord) {
  Give(2026, Days(320));
  seams_.progress.onStep = [](const auto& step) { return step.done < 110; };
  EXPECT_EQ(Write({.firstYear = 2025, .lastYear = 2027}), ExportOutcome::Cancelled);
  EXPECT_THAT(seams_.progress.steps, ElementsAre(ScriptedProgress::Step{0, 300, "Year 2025"},
                                                 ScriptedProgress::Step{100, 300, "Year 2026"},
                                                 ScriptedProgress::Step{110, 300, "Year 2026"}));
  EXPECT_EQ(File(), OlderFile);
  EXPECT_EQ(source_.notes, "begin 2025 2026 end");
}

TEST_F(XmlExportCase, WhateverKeepsTheFileFromBeingReplacedIsToldAndTheOlderFileStays) {
  seams_.environment.separator = '\\';
  const std::string beside = "C:\\out\\.velkor-export-4aff7f3cf277ccba";
  const MemoryFiles older = seams_.files;
  seams_.files.fail.writeAfter = 100;
  seams_.messages.Expect("The disk is full.");
  EXPECT_EQ(Write(ThisYear), ExportOutcome::NotSaved);
  EXPECT_EQ(seams_.messages.Shown().back().title, "File Error");
  EXPECT_EQ(seams_.files.contents, older.contents);

  seams_.files.fail.writeAfter = 100;
  seams_.files.fail.writeError = errors::DeviceUnavailable;
  seams_.messages.Expect("unavailable", MessageAnswer::Retry);
  seams_.messages.Expect("unavailable", MessageAnswer::Cancel);
  EXPECT_EQ(Write(ThisYear), ExportOutcome::NotSaved);
  EXPECT_EQ(seams_.files.contents, older.contents);

  seams_.files.fail = {};
  seams_.files.fail.replace = {FileName};
  const Error error = ErrorOf([&] { Write(ThisYear); });
  EXPECT_EQ(error.Number(), 70);
  EXPECT_EQ(error.Description(), std::string("Permission denied: ") + FileName);
  EXPECT_EQ(seams_.files.contents, older.contents);

  seams_.files.fail.open = {beside};
  seams_.messages.Expect("Failed to save file.");
  EXPECT_EQ(Write(ThisYear), ExportOutcome::NotSaved);
  EXPECT_EQ(seams_.files.contents, older.contents);
}

TEST_F(XmlExportCase, CancellingEitherDialogDoesNothing) {
  Run([](dlgSaveType& form) { form.CancelButton.Click(); });
  EXPECT_TRUE(seams_.dialogs.shown.empty());
  Run([](dlgSaveType& form) { form.OKButton.Click(); }, "");
  EXPECT_EQ(seams_.dialogs.shown.size(), 1U);
  EXPECT_EQ(File(), OlderFile);
  EXPECT_EQ(source_.notes, "");
}

TEST_F(XmlExportCase, TheDialogsChooseYearsAndFile) {
  seams_.messages.Expect("Velkor Data saved");
  Run([](dlgSaveType& form) {
    form.tbFrom.SetText("15/06/2004");
    form.tbTo.SetText("01/01/2005");
    form.OKButton.Click();
  });
  const FileDialog& dialog = seams_.dialogs.shown.at(0);
  EXPECT_EQ(dialog.filter, "Velkor Data(*.xml)|*.xml|All Files(*.*)|*.*");
  EXPECT_EQ(dialog.title, "Save Velkor Data");
  EXPECT_EQ(dialog.flags, 6U);
  EXPECT_EQ(dialog.defaultExtension, "xml");
  EXPECT_EQ(source_.notes, "begin 2004 2005 end");
  EXPECT_THAT(File(), HasSubstr("\t<Appointments>\r\n\t</Appointments>\r\n"));
  seams_.messages.Expect("Velkor Data saved");
  Run([](dlgSaveType& form) {
    form.rbCatsOnly.Choose();
    form.tbTo.SetText("31/02/2005");
    form.OKButton.Click();
  });
  EXPECT_THAT(File(), Not(HasSubstr("Appointments")));
}

TEST_F(XmlExportCase, ImportTellsTheChosenFileAndNothingWhenThereIsNone) {
  ImportCategories(platform_);
  seams_.dialogs.whileOpen = [] { throw Error(5, "no dialog"); };
  ImportCategories(platform_);
  seams_.dialogs.whileOpen = nullptr;
  EXPECT_TRUE(seams_.messages.Shown().empty());
  seams_.dialogs.fileNames = {"C:\\data\\cats.txt"};
  seams_.messages.Expect("To Do: C:\\data\\cats.txt");
  ImportCategories(platform_);
  EXPECT_EQ(seams_.dialogs.shown.back().filter, "All Files|*.*");
  EXPECT_EQ(seams_.dialogs.shown.back().title, "Open Categories File");
}

}  // namespace
}  // namespace velkor
