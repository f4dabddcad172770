// tests/model/EventFieldsTest.cpp: positions of events inside, across and outside a span.
#include "model/EventFields.h"

#include <gtest/gtest.h>

#include "tests/model/SampleEvents.h"

namespace velkor {
namespace {

struct Derived {
  Date start;
  Date end;
  int startMonth;
  int startDay;
  int endMonth;
  int endDay;
};

void ExpectDerived(const DisplaySpan& span, std::initializer_list<Derived> cases) {
  const CategoryTable categories = SampleCategories();
  const EventFields fields{span, MonthColumns(span), categories};
  for (const Derived& expected : cases) {
    CalEvent event = SampleEvent("id", expected.start, expected.end, "Key Customer");
    event.Band = 7;
    event.StartDay = event.EndDay = 99;
    fields.Derive(event);
    SCOPED_TRACE(testing::Message() << "start " << expected.start.Days());
    EXPECT_EQ(event.StartMonth, expected.startMonth);
    EXPECT_EQ(event.StartDay, expected.startDay);
    EXPECT_EQ(event.EndMonth, expected.endMonth);
    EXPECT_EQ(event.EndDay, expected.endDay);
    EXPECT_EQ(event.CatIndex, 2);
    EXPECT_EQ(event.Band, 0);
    EXPECT_EQ(event.RowSpan, 0);
    EXPECT_FALSE(event.Recurring);
  }
}

// The 1st of January 2005 is a Saturday (column 7), that of March and of February a Tuesday.
TEST(EventFields, OfACalendarYear) {
  ExpectDerived({2005, 1}, {{At(2005, 3, 10), At(2005, 3, 11), 3, 12, 3, 12},
                            {At(2005, 3, 10, 9), At(2005, 3, 10, 17), 3, 12, 3, 11},
                            {At(2005, 1, 31), At(2005, 2, 1), 1, 37, 2, 2},
                            {At(2004, 12, 20), At(2005, 2, 10), 0, 0, 2, 11},
                            {At(2003, 12, 31), At(2007, 1, 1), -12, 0, 25, 0},
                            {At(2005, 12, 31), At(2006, 1, 1), 12, 35, 13, 0},
                            {At(2004, 12, 31), At(2005, 1, 1), 0, 0, 1, 6}});
}

// The 1st of July 2005 is a Friday, that of March 2006 a Wednesday, of June 2006 a Thursday.
TEST(EventFields, OfASpanFromJulyToJune) {
  ExpectDerived({2005, 7}, {{At(2006, 3, 15), At(2006, 3, 16), 3, 18, 3, 18},
                            {At(2005, 3, 15), At(2005, 3, 16), -3, 0, -3, 0},
                            {At(2005, 6, 30, 23, 59), At(2005, 7, 1, 1), 0, 0, 7, 5},
                            {At(2006, 6, 30, 23, 59), At(2006, 7, 1), 6, 34, 13, 0},
                            {At(2006, 8, 1), At(2006, 9, 1), 14, 0, 15, 0}});
}

}  // namespace
}  // namespace velkor
