// tests/view/BandLayoutTest.cpp: bands of random years against a plain search, and very many.
#include "view/BandLayout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

#include "model/EventFields.h"
#include "tests/model/SampleEvents.h"
#include "view/CellMap.h"

namespace velkor {
namespace {

/// A year that was laid out.
struct Year {
  EventCollection events;
  BandLayout layout;
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

/// The first band from 2 on, by a search one after the other, whose last bar in a row ends before
/// a column.
int FirstFree(const std::vector<int>& ends, int column) {
  const auto isFree = [&](int end) { return end == 0 || end < column; };
  return static_cast<int>(std::find_if(ends.begin() + 2, ends.end(), isFree) - ends.begin());
}

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

TEST(BandLayout, EveryEventTakesTheFirstBandThatIsFreeWhereItBegins) {
  RandomYears years;
  std::size_t bars = 0;
  for (int round = 0; round < 4000; ++round) {
    const YearSettings settings = years.Settings();
    const Year year = LayOut(years.Events(settings.span), settings);
    std::vector<std::vector<int>> ends(13, std::vector<int>(year.events.Count() + 3, 0));
    std::array<int, 13> most{};
    std::fill(most.begin() + 1, most.end(), 4);
    auto bar = year.layout.bars.begin();
    for (std::size_t i = 0; i < year.events.Count(); ++i) {
      const CalEvent& event = year.events[i];
      const bool shown = IsShown(event, settings.filter);
      const int row = settings.span.IsDateInView(event.StartDate)
                          ? settings.span.RowOfMonth(event.StartMonth)
                          : 1;
      ASSERT_EQ(event.Band, shown ? FirstFree(ends[row], event.StartDay) : 0) << round;
      if (shown) most[row] = std::max(most[row], event.Band);
      for (; bar != year.layout.bars.end() && bar->event == i; ++bar, ++bars) {
        ASSERT_EQ(bar->band, event.Band);
        ends[bar->row][bar->band] = bar->last;
        most[bar->row] = std::max(most[bar->row], bar->band);
      }
    }
    ASSERT_TRUE(bar == year.layout.bars.end());
    std::partial_sum(most.begin(), most.end(), most.begin());
    ASSERT_EQ(year.layout.BandsInRow, most) << round;
  }
  EXPECT_GT(bars, 100'000U);
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
