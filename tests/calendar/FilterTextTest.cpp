// tests/calendar/FilterTextTest.cpp: filter texts, their dates and their faults.
#include "calendar/FilterText.h"

#include <gmock/gmock.h>

#include "tests/support/ErrorOf.h"

namespace velkor {
namespace {

using testing::HasSubstr;

Date At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  return Date::FromFields({year, month, day, hour, minute, second});
}

Date DateIn(const std::string& value, DateOrder order = DateOrder::MonthDayYear) {
  return ParseFilter("[Start]<='" + value + "'", order).at(0).date;
}

std::string FaultOf(std::string_view text) {
  const Error error = ErrorOf([&] { ParseFilter(text, DateOrder::MonthDayYear); });
  EXPECT_EQ(error.Number(), errors::CalendarFailed);
  return error.Description();
}

TEST(FilterText, ReadsTheRestrictionOfASpanFollowedByASubject) {
  const Filter filter = ParseFilter(
      "[Start] <= \"3/31/2006 11:59 PM\" AND [End] > \"4/1/2005 12:00 AM\""
      " And [Subject]='Trip to \"Ghent\"'",
      DateOrder::MonthDayYear);
  ASSERT_EQ(filter.size(), 3U);
  EXPECT_EQ(filter[0].property, FilterProperty::Start);
  EXPECT_EQ(filter[0].op, FilterOperator::LessOrEqual);
  EXPECT_EQ(filter[0].date, At(2006, 3, 31, 23, 59));
  EXPECT_EQ(filter[1].property, FilterProperty::End);
  EXPECT_EQ(filter[1].op, FilterOperator::Greater);
  EXPECT_EQ(filter[1].date, At(2005, 4, 1));
  EXPECT_EQ(filter[2].text, "Trip to \"Ghent\"");
}

TEST(FilterText, ReadsDatesInTheOrderOfTheLocaleWithAnySeparator) {
  EXPECT_EQ(DateIn("2/1/2006"), At(2006, 2, 1));
  EXPECT_EQ(DateIn("31/12/2010", DateOrder::DayMonthYear), At(2010, 12, 31));
  EXPECT_EQ(DateIn("31.12.2010 23:59", DateOrder::DayMonthYear), At(2010, 12, 31, 23, 59));
  EXPECT_EQ(DateIn("2010-12-31 12:30 am", DateOrder::YearMonthDay), At(2010, 12, 31, 0, 30));
  EXPECT_EQ(DateIn("2010. 12. 31. 12:30:15 PM", DateOrder::YearMonthDay),
            At(2010, 12, 31, 12, 30, 15));
  EXPECT_EQ(DateIn("2010年12月31日 11:59 PM", DateOrder::YearMonthDay), At(2010, 12, 31, 23, 59));
  EXPECT_EQ(DateIn("02/29/2024"), At(2024, 2, 29));
}

TEST(FilterText, RefusesDatesThatDoNotExist) {
  for (const char* value :
       {"2/29/2023", "13/1/2006", "0/1/2006", "1/2/06", "1/2", "", "soon", "1/2/20060",
        "1/2/2006 25:00", "1/2/2006 13:00 PM", "1/2/2006 0:30 AM", "1/2/2006 10:60", "1/2/2006 10",
        "1/2/2006 10:00 XM", "1/2/2006 10:00 PM x", "1/2/2006x", "1/2/0099", "1 Jan 2006"}) {
    EXPECT_THROW(DateIn(value), Error) << value;
  }
}

TEST(FilterText, SaysWhatIsWrongAndWhere) {
  EXPECT_EQ(FaultOf("[Subject]='it's'"),
            "The filter \"[Subject]='it's'\" cannot be used: AND or the end is expected at "
            "position 15.");
  const std::pair<const char*, const char*> cases[] = {
      {"[Subject]='a''b'", "at position 14"},
      {"[Subject]='a", "the quote is not closed at position 11"},
      {"[Colour]='a'", "the property \"Colour\" is not known at position 2"},
      {"[Subject]!'a'", "at position 10"},
      {"[Subject]='a' OR [Subject]='b'", "at position 15"},
      {"[Subject]='a' AND", "at position 18"},
      {"", "at position 1"},
      {"[Subject", "the bracket is not closed"},
      {"[Subject]=a", "a value in quotes"},
  };
  for (const auto& [text, fault] : cases) {
    EXPECT_THAT(FaultOf(text), HasSubstr(fault)) << text;
  }
}

TEST(FilterText, ComparesTextsWithoutLetterCaseAndCategoriesOneByOne) {
  const std::vector<std::string> categories{"Leave", "Trips"};
  const FilteredFields fields{At(2026, 1, 1), At(2026, 1, 2), "Ghent", categories,
                              "IPM.Appointment"};
  const auto matches = [&](std::string_view text) {
    return Matches(ParseFilter(text, DateOrder::MonthDayYear), fields);
  };
  EXPECT_TRUE(matches("[subject] = \"gHENT\" and [Categories]='trips'"));
  EXPECT_FALSE(matches("[Categories]='Leave, Trips'"));
  EXPECT_FALSE(matches("[Subject]='Ghent '"));
  EXPECT_TRUE(matches("[MessageClass]>='IPM'"));
  EXPECT_TRUE(matches("[Start]>='1/1/2026' AND [End]<'1/2/2026 12:01 AM'"));
  EXPECT_FALSE(matches("[Start]>'1/1/2026'"));
  EXPECT_FALSE(matches("[Start]<'1/1/2026'"));
  EXPECT_TRUE(matches("[End]='1/2/2026'"));
}

}  // namespace
}  // namespace velkor
