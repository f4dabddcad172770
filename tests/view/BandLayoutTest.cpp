// tests/view/BandLayoutTest.cpp: bands of single cases, and of random years against a plain table.
#include "view/BandLayout.h"

#include <gtest/gtest.h>

#include <random>
#include <tuple>

#include "model/EventFields.h"
#include "tests/model/SampleEvents.h"
#include "view/CellMap.h"

namespace velkor {
namespace {

/// Event, band, row, first and last.
using BarValues = std::tuple<int, int, int, int, int>;

/// A year that was laid out.
struct Year {
  EventCollection events;
  BandLayout layout;

  std::vector<int> Bands() const {
    std::vector<int> bands;
    for (const CalEvent& event : events) bands.push_back(event.Band);
    return bands;
  }
  std::vector<BarValues> Bars() const {
    std::vector<BarValues> values;
    for (const Bar& bar : layout.bars) {
      values.emplace_back(bar.event, bar.band, bar.row, bar.first, bar.last);
    }
    return values;
  }
};

struct YearSettings {
  DisplaySpan span{2006, 1};
  bool allEvents = false;
  CategoryFilter filter = CategoryFilter();
  bool hideNonCategoryItems = false;
};

Year LayOut(std::vector<CalEvent> events, const YearSettings& settings = {}) {
  const CategoryTable categories = SampleCategories();
  const MonthColumns columns(settings.span);
  const EventFields fields{settings.span, columns, categories, ", ", settings.hideNonCategoryItems};
  for (CalEvent& event : events) {
    fields.Derive(event);
    event.Band = 99;
  }
  Year year{EventCollection(std::move(events)), {}};
  year.layout =
      LayOutBands(year.events, {settings.span, columns, settings.allEvents}, settings.filter);
  return year;
}

/// What a year must come to, by a table of every row and band that is searched cell by cell.
struct TableRun {
  std::vector<int> bands;
  std::array<int, 13> BandsInRow{};
  std::vector<BarValues> bars;

  TableRun(const EventCollection& events, const YearSettings& settings)
      : bands(events.Count(), 0), span_(settings.span), allEvents_(settings.allEvents) {
    occupied_.assign(13, std::vector<int>(events.Count() + 2, 0));
    for (int row = 1; row <= 12; ++row) BandsInRow[row] = 4;
    for (std::size_t i = 0; i < events.Count(); ++i) {
      const CalEvent& event = events[i];
      if (event.CatIndex < 0 || settings.filter.IsFilteredOut(event.Categories)) continue;
      const bool before = event.EndDate < span_.ViewStartDate();
      const bool after = !(event.StartDate < span_.ViewEndDate().AddDays(1));
      if (before || after || event.EndDate < event.StartDate) continue;
      Place(event, static_cast<int>(i));
    }
    for (int row = 1; row <= 12; ++row) BandsInRow[row] += BandsInRow[row - 1];
  }

 private:
  int OffsetOf(int row) const { return span_.FirstWeekdayOfMonth(span_.MonthOfRow(row)) - 1; }
  int LastColumnOf(int row) const {
    return OffsetOf(row) + span_.DaysInMonth(span_.MonthOfRow(row));
  }

  void Place(const CalEvent& event, int index) {
    const int startRow =
        span_.IsDateInView(event.StartDate) ? span_.RowOfMonth(event.StartMonth) : 1;
    int band = 2;
    while (occupied_[startRow][band] > 0 && occupied_[startRow][band] >= event.StartDay) ++band;
    BandsInRow[startRow] = std::max(BandsInRow[startRow], band);
    bands[index] = band;
    const int endRow = span_.IsDateInView(event.EndDate) ? span_.RowOfMonth(event.EndMonth) : 12;
    for (int row = startRow; row <= endRow && row <= 12; ++row) {
      const int month = span_.MonthOfRow(row);
      const int first = month == event.StartMonth ? event.StartDay - 1 : OffsetOf(row);
      int last = month == event.EndMonth ? event.EndDay : LastColumnOf(row);
      if (allEvents_ && month == event.EndMonth && HasTimeOfDay(event.EndDate)) {
        last = last + 1;
      } else if (allEvents_ && first == last && event.StartDate == event.EndDate) {
        last = first + 1;
      }
      if (first == last) continue;
      occupied_[row][band] = last;
      BandsInRow[row] = std::max(BandsInRow[row], band);
      bars.emplace_back(index, band, row, first, last);
    }
  }

  DisplaySpan span_;
  bool allEvents_;
  std::vector<std::vector<int>> occupied_;
};

/// Years of every kind that a calendar can hold, sensible or not.
class RandomYears {
 public:
  YearSettings Settings() {
    YearSettings settings{{1900 + Below(200), 1 + Below(12)}, Below(2) == 0, CategoryFilter(), {}};
    if (Below(3) == 0) {
      settings.filter.SetCategoryFilter(Below(2) == 0 ? "Leave" : "Key Customer, Leave");
      settings.filter.SetFilterMode(Below(2) == 0);
    }
    settings.hideNonCategoryItems = Below(4) == 0;
    return settings;
  }
  std::vector<CalEvent> Events(const DisplaySpan& span) {
    static constexpr const char* Categories[] = {"Leave", "", "Unknown", "Leave, Key Customer",
                                                 "Key Customer"};
    std::vector<CalEvent> events;
    const bool oneDay = Below(5) == 0;
    for (int i = Below(80); i > 0; --i) {
      const int day = oneDay ? 200 : Below(Below(8) == 0 ? 800 : 380) - (Below(8) == 0 ? 400 : 8);
      const Date start = Time(span.ViewStartDate().AddDays(day));
      events.push_back(SampleEvent(std::to_string(i), start, EndOf(start), Categories[Below(5)]));
    }
    return events;
  }

 private:
  int Below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }
  Date Time(Date day) {
    return Below(2) == 0 ? day : Date::FromSeconds(day.Seconds() + Below(86400));
  }
  Date EndOf(Date start) {
    switch (Below(8)) {
      case 0:
        return start;
      case 1:
        return Time(start.AddDays(-Below(40)));
      case 2:
        return Time(start.AddDays(Below(500)));
      case 3:
        return Date::FromSeconds(start.Seconds() + Below(86400));
      case 4:
        return Date::FromSeconds(start.Seconds() + Below(100));
      default:
        return Time(start.Midnight().AddDays(1 + Below(20)));
    }
  }

  std::mt19937 random_{20050418};
};

TEST(BandLayout, RandomYearsComeOutAsByTheTable) {
  RandomYears years;
  std::size_t bars = 0;
  int highest = 0;
  for (int round = 0; round < 4000; ++round) {
    const YearSettings settings = years.Settings();
    const Year year = LayOut(years.Events(settings.span), settings);
    const TableRun expected(year.events, settings);
    ASSERT_EQ(year.Bands(), expected.bands) << round;
    ASSERT_EQ(year.layout.BandsInRow, expected.BandsInRow) << round;
    ASSERT_EQ(year.Bars(), expected.bars) << round;
    bars += year.layout.bars.size();
    highest = std::max(highest, year.layout.TotalBands());
  }
  EXPECT_GT(bars, 100'000U);
  EXPECT_GT(highest, 100);
}

TEST(BandLayout, MoreBandsThanSixteenBitsCountDoNotOverflow) {
  std::vector<CalEvent> events;
  for (int i = 0; i < 70'000; ++i) {
    events.push_back(SampleEvent(std::to_string(i), At(2006, 1, 10), At(2006, 1, 11)));
  }
  const Year year = LayOut(std::move(events));
  EXPECT_EQ(year.events[69'999].Band, 70'001);
  EXPECT_EQ(year.layout.TotalBands(), 70'001 + 11 * 4);
  EXPECT_EQ(CellMap(year.layout).At(1, 10, 70'001), 69'999U);
}

}  // namespace
}  // namespace velkor
