// tests/categories/ColourStoreTest.cpp: fetching, migrating, creating and saving colour records.
#include "categories/ColourStore.h"

#include "categories/ColourList.h"
#include "categories/ColourRecords.h"
#include "tests/categories/CategoryCase.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const std::string Prefix = "PLEASE IGNORE - Velkor Category Colours: ";
const std::string Legacy = "Please Ignore - Holds Category Colours for the Year Planner";
const std::string Header = "--DO NOT EDIT LIST MANUALLY--";
constexpr auto Created = ColourRecordChange::Created;

class ColourStoreTest : public CategoryCase {
 protected:
  void Put(const std::string& subject, const std::string& body, Date at = At(2011, 1, 1, 1, 30)) {
    CalendarItem item = SampleRecord(subject, body, at);
    item.entryId += std::to_string(calendar_.AllItems().size());
    calendar_.Add(item);
  }
  /// Subject and body of each item, a bar between them.
  std::vector<std::string> Stored() {
    std::vector<std::string> stored;
    for (const auto& item : calendar_.AllItems()) {
      stored.push_back(item->fields.subject + " / " + item->fields.body);
    }
    return stored;
  }
};

TEST_F(ColourStoreTest, AnEmptyFolderGetsARecordWithTheDefaultsOutOfEveryonesWay) {
  const FetchedColours fetched = colours_.Fetch("Default");
  EXPECT_EQ(fetched.categories, DefaultCategories());
  EXPECT_THAT(fetched.done, ElementsAre(Created));
  ASSERT_THAT(calendar_.AllItems(), SizeIs(1));
  const CalendarItem& record = *calendar_.AllItems()[0];
  EXPECT_EQ(record.fields.subject, Prefix + "Default");
  EXPECT_EQ(SplitColourList(record.fields.body).size(), 16U);
  EXPECT_EQ(record.start, At(2011, 1, 1, 1, 30));
  EXPECT_EQ(record.end, record.start);
  EXPECT_EQ(record.messageClass, "IPM.Appointment");

  EXPECT_THAT(colours_.Fetch("Default").done, IsEmpty());
  EXPECT_THAT(colours_.Fetch("Team").done, ElementsAre(Created)) << "each title has its own";
  tmrItems_.Tick();
  EXPECT_THAT(view_.Take(), ElementsAre("colours")) << "and is no appointment";
}

TEST_F(ColourStoreTest, ABodyEditedByHandKeepsTheEntriesBeforeTheFaultAndIsNotTouched) {
  const std::string body = Header + "\r\nA|1\r\nB 2\r\nC|3";
  for (const std::string& subject : {Legacy, Prefix + "Team"}) {
    Put(subject, body);
    const auto before = Stored();
    messages_.Expect("Error fetching category colours 13 Line 3 of the colour list");
    const FetchedColours fetched = colours_.Fetch("Team");
    EXPECT_THAT(fetched.categories, ElementsAre(Category{"A", Colour{1}}));
    EXPECT_TRUE(fetched.fault);
    EXPECT_THAT(fetched.done, IsEmpty());
    EXPECT_EQ(Stored(), before);
  }
}

TEST_F(ColourStoreTest, ACalendarThatRefusesToSaveIsToldAndStillPlannedInColours) {
  calendar_.SetWriter(&writer_);
  writer_.refuses = true;
  messages_.Expect("Error fetching category colours 440 The disk is full.");
  EXPECT_EQ(colours_.Fetch("").categories, DefaultCategories());
  messages_.Expect("Error saving category colours 440 The disk is full.");
  EXPECT_FALSE(colours_.Save("", DefaultCategories()));
  EXPECT_THAT(Stored(), IsEmpty());

  Put(Legacy, Header + "\r\nA|1\r\nB|2");
  messages_.Expect("Error fetching category colours 440 The disk is full.");
  EXPECT_THAT(colours_.Fetch("").categories, SizeIs(2));
  Put(Prefix + "Short", Header);
  const auto before = Stored();
  messages_.Expect("Error fetching category colours 440 The disk is full.");
  EXPECT_THAT(colours_.Fetch("Short").categories, IsEmpty());
  EXPECT_EQ(Stored(), before);

  writer_.refuses = false;
  EXPECT_TRUE(colours_.Save("", {{"A", Colour{1}}}));
}

TEST_F(ColourStoreTest, ATitleWithAnyQuotesKeepsItsOwnColours) {
  const std::vector<std::string> titles{"Ann's", "'", "\"Ann\"", "Ann's \"own\"", "Tom's \"own\""};
  for (const std::string& title : titles) EXPECT_TRUE(colours_.Save(title, {{title, Colour{1}}}));
  EXPECT_THAT(Stored(), SizeIs(titles.size()));
  for (const std::string& title : titles) {
    EXPECT_THAT(colours_.Fetch(title).categories, ElementsAre(Category{title, Colour{1}}));
  }
}

TEST_F(ColourStoreTest, AFolderThatIsGoneIsTold) {
  access_.Release();
  messages_.Expect("Error fetching category colours 440 ");
  EXPECT_THAT(colours_.CollectAllLists(), IsEmpty());
}

TEST_F(ColourStoreTest, WhatIsSavedIsFetchedAgainAndTheLastOfTwoPlannersWins) {
  const std::vector<Category> mine{{"Key Customer", Colour{-2147483647 - 1}}, {"Other", Colour{1}}};
  const std::vector<Category> theirs{{"Leave", Colour{16711680}}, {"Other", Colour{2}}};
  Put(Legacy, Header + "\r\nA|1\r\nB|2");
  ColourStore other([this] { return access_.ReopenFolder(); }, seams_.locale, messages_);
  EXPECT_TRUE(colours_.Save("Team", mine)) << "the older form is not looked at";
  EXPECT_EQ(other.Fetch("Team").categories, mine);
  EXPECT_TRUE(other.Save("Team", theirs));
  EXPECT_EQ(colours_.Fetch("Team").categories, theirs);
  EXPECT_TRUE(colours_.Save("Team", mine));
  EXPECT_THAT(Stored(),
              ElementsAre(testing::StartsWith(Legacy), Prefix + "Team / " + ColourListText(mine)));
}

TEST_F(ColourStoreTest, ATitleFindsItsOwnListBeforeTheOlderFormWhateverTheDateFormat) {
  using Lines = std::vector<std::string>;
  const auto find = [&](const char* title) {
    return ColourRecords(*access_.ReopenFolder(), seams_.locale).FindList(title);
  };
  Put("Holiday", "h\r\nno|1");
  Put(Legacy, "h\r\nOld|1\r\nOther|2");
  EXPECT_EQ(find("Team"), (Lines{"h", "Old|1", "Other|2"}));
  Put(Prefix + "Team", "h\r\nTeam|1\r\n");
  Put(Prefix, "h\r\nNone|2");
  Put(Prefix + "Short", "h\r\n \r\n");
  Put(Prefix + "Early", "h\r\nEarly|1", At(2010, 1, 1, 1, 30));
  for (const char* format : {"M/d/y", "d/M/y", "y/M/d"}) {
    seams_.locale.dates = DatePattern(format);
    EXPECT_EQ(find("Team"), (Lines{"h", "Team|1"}));
    EXPECT_EQ(find(""), (Lines{"h", "None|2"}));
    EXPECT_EQ(find("Short"), std::nullopt);
    EXPECT_EQ(find("Early"), (Lines{"h", "Old|1", "Other|2"})) << "before the last day of 2010";
  }
}

TEST_F(ColourStoreTest, AllListsAreCollectedRecordAfterRecord) {
  Put(Prefix + "Team", "\r\n" + Header + "\r\nA|1\r\nOther|2\r\n\r\n");
  Put("Holiday", Header + "\r\nNo|1");
  Put(Prefix, Header);
  Put(Legacy, Header + "\r\nOld|1\r\nOlder|1");
  Put("Copy of " + Prefix + "Ann's", Header + "\r\nOther|3");
  Put(Prefix, Header + "\r\nLate|1", At(2011, 1, 2));
  for (const char* format : {"M/d/y", "d/M/y"}) {
    seams_.locale.dates = DatePattern(format);
    const auto lines = colours_.CollectAllLists();
    EXPECT_THAT(lines, ElementsAre("", "A|1", "Other|2", "Other|3"));
    EXPECT_THAT(CategoryNamesOf(lines), ElementsAre("A", "Other", "Other"));
  }
}

}  // namespace
}  // namespace velkor
