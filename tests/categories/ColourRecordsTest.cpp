// tests/categories/ColourRecordsTest.cpp: which record of a calendar holds a planner's colours.
#include "categories/ColourRecords.h"

#include <gmock/gmock.h>

#include "calendar/EmbeddedOutlook.h"
#include "platform/headless/FixedLocale.h"
#include "support/values/Error.h"
#include "tests/model/SampleEvents.h"

namespace velkor {
namespace {

using Lines = std::vector<std::string>;

constexpr const char* Prefix = "PLEASE IGNORE - Velkor Category Colours: ";
constexpr const char* Legacy = "Please Ignore - Holds Category Colours for the Year Planner";

class ColourRecordsTest : public testing::Test {
 protected:
  void Add(const std::string& subject, const std::string& body, int year = 2011) {
    CalendarItem item;
    item.entryId = "id " + std::to_string(folder_.AllItems().size());
    item.fields.subject = subject;
    item.fields.body = body;
    item.start = item.end = At(year, 1, 1, 1, 30);
    folder_.Add(item);
  }
  std::optional<Lines> Find(const std::string& title) {
    const auto folder =
        outlook_.GetNamespace("MAPI")->GetFolderFromID(folder_.EntryID(), store_.StoreID());
    return ColourRecords(*folder, locale_).FindList(title);
  }

  FixedLocale locale_;
  CalendarStore store_{"store"};
  CalendarFolder& folder_ = store_.AddFolder("Calendar", "f1", outlook::ItemTypeAppointment);
  EmbeddedOutlook outlook_{store_, locale_, {"Ann", ",", "11.0"}};
};

TEST_F(ColourRecordsTest, EachTitleHasItsOwnListWhateverTheDateFormat) {
  Add("Holiday", "h\r\nno|1");
  Add(std::string(Prefix) + "Team", "h\r\nTeam|1\r\n");
  Add(Prefix, "h\r\nNone|2");
  for (const char* format : {"M/d/y", "d/M/y", "y/M/d"}) {
    locale_.dates = DatePattern(format);
    EXPECT_EQ(Find("Team"), (Lines{"h", "Team|1"}));
    EXPECT_EQ(Find(""), (Lines{"h", "None|2"}));
    EXPECT_EQ(Find("Tea"), std::nullopt);
  }
}

TEST_F(ColourRecordsTest, ItsOwnRecordGoesBeforeOneInTheOlderForm) {
  Add(Legacy, "h\r\nOld|1\r\nOther|2");
  EXPECT_EQ(Find("Team"), (Lines{"h", "Old|1", "Other|2"}));
  Add(std::string(Prefix) + "Team", "h\r\nNew|1");
  EXPECT_EQ(Find("Team"), (Lines{"h", "New|1"}));
}

TEST_F(ColourRecordsTest, AListTooShortToKeepCountsAsNone) {
  Add(Legacy, "h\r\nOld|1");
  EXPECT_EQ(Find("a"), std::nullopt);
  Add(std::string(Prefix) + "a", "h\r\n \r\n");
  Add(std::string(Prefix) + "b", "");
  EXPECT_EQ(Find("a"), std::nullopt);
  EXPECT_EQ(Find("b"), std::nullopt);
}

TEST_F(ColourRecordsTest, RecordsBeforeTheLastDayOf2010AreNotTaken) {
  Add(Prefix, "h\r\nEarly|1", 2010);
  EXPECT_EQ(Find(""), std::nullopt);
}

TEST_F(ColourRecordsTest, ATitleWithAnApostropheBreaksTheSearchAloud) {
  EXPECT_THROW(Find("Ann's"), Error);
}

}  // namespace
}  // namespace velkor
