// tests/control/DrawnDaysTest.cpp: every day of every appointment is drawn, nothing else is, and no
// cell holds two, after a load and after whatever arrives. VELKOR_CALENDARS may name a folder with
// more calendars.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <random>
#include <set>
#include <tuple>

#include "calendar/set/SetCalendar.h"
#include "refresh/RefreshYear.h"
#include "tests/control/PlannerCase.h"

namespace velkor {
namespace {

/// No file: appointments by chance.
constexpr const char* Generated = "";

/// Cells (row and column) that are drawn and lie outside the appointment, days of it that are not
/// drawn, and cells (row, band and column) with two bars.
struct Faults {
  std::size_t outside = 0;
  std::size_t missing = 0;
  std::size_t shared = 0;

  std::size_t Count() const { return outside + missing + shared; }
};

using Cells = std::set<std::tuple<int, int>>;

/// The days of the span that an appointment touches; without AllEvents the last one only when it
/// ends with that day.
Cells DaysOf(const CalEvent& event, const YearGrid& grid) {
  const bool isMoment = event.StartDate == event.EndDate;
  const bool touchesLast = grid.Properties().AllEvents && (HasTimeOfDay(event.EndDate) || isMoment);
  const std::int64_t first =
      std::max(event.StartDate.DayNumber(), grid.Span().ViewStartDate().DayNumber());
  const std::int64_t last = std::min(event.EndDate.DayNumber() - (touchesLast ? 0 : 1),
                                     grid.Span().ViewEndDate().DayNumber());
  Cells days;
  for (std::int64_t day = first; day <= last; ++day) {
    const GridCell cell = *grid.Columns().CellOf(Date(static_cast<double>(day)));
    days.emplace(cell.row, cell.column);
  }
  return days;
}

Faults FaultsOf(const YearGrid& grid) {
  Faults faults;
  std::map<std::uint32_t, Cells> drawn;
  std::set<std::tuple<int, int, int>> taken;
  for (const Bar& bar : grid.Layout().bars) {
    for (int column = bar.first + 1; column <= bar.last; ++column) {
      drawn[bar.event].emplace(bar.row, column);
      if (!taken.emplace(bar.row, bar.band, column).second) ++faults.shared;
    }
  }
  for (std::uint32_t i = 0; i < grid.Events().Count(); ++i) {
    if (!IsShown(grid.Events()[i], grid.Filter())) continue;
    const Cells days = DaysOf(grid.Events()[i], grid);
    const Cells& cells = drawn[i];
    for (const auto& cell : cells) faults.outside += !days.contains(cell);
    for (const auto& day : days) faults.missing += !cells.contains(day);
  }
  return faults;
}

/// A calendar file, AllEvents, and the year on show.
class DrawnDays : public PlannerCase,
                  public testing::WithParamInterface<std::tuple<std::string, bool, int>> {
 protected:
  DrawnDays() {
    bag_.values["AllEvents"] = std::get<bool>(GetParam());
    AnswerEveryStop();
  }

  int Below(std::size_t bound) { return static_cast<int>(random_() % bound); }

  std::vector<CalendarItem> Items() {
    const auto& [path, allEvents, year] = GetParam();
    std::vector<CalendarItem> items;
    if (path == Generated) {
      for (int i = 0; i < 150; ++i) items.push_back(Generate("g" + std::to_string(i), year));
    } else {
      const DisplaySpan span{year, 1};
      SetCalendar file(path, {span.ViewStartDate(), span.ViewEndDate().AddDays(1)});
      for (const auto& item : file.Folder().AllItems()) items.push_back(*item);
    }
    std::shuffle(items.begin(), items.end(), random_);
    return items;
  }
  CalendarItem Generate(std::string id, int year) {
    const auto atSomeTime = [&](Date day) {
      constexpr std::int64_t HalfHour = 1800;
      return Below(2) == 0 ? day : Date::FromSeconds(day.Seconds() + Below(48) * HalfHour);
    };
    const Date start = atSomeTime(At(year, 1, 1).AddDays(Below(430) - 40));
    constexpr std::size_t MostDays[] = {1, 2, 5, 40, 200};
    const Date end = atSomeTime(start.Midnight().AddDays(Below(MostDays[Below(5)])));
    return SampleItem(std::move(id), start, std::max(start, end));
  }

  /// Does what the control asked the cache utility for.
  void Refresh() {
    const RefreshInputs& inputs = seams_.cacheUtilities.started.back();
    RefreshYear({{inputs.viewYear, inputs.firstMonth},
                 {inputs.cacheFile, inputs.workFile},
                 inputs.folderId,
                 inputs.storeId},
                embedded_, seams_.files, seams_.locale);
    seams_.cacheUtilities.Complete(static_cast<short>(SynchResult::CacheWritten));
  }
  void ChangeSomething(CalendarItem arriving) {
    const auto& items = calendar_.AllItems();
    const auto some = items[static_cast<std::size_t>(Below(items.size()))];
    const int kind = Below(6);
    if (kind == 0) {
      calendar_.Delete(some->entryId);
    } else if (kind == 1 && !some->recurring) {
      const int days = Below(60) - 30;
      ItemChange move;
      move.start = some->start.AddDays(days);
      move.end = some->end.AddDays(days);
      calendar_.SaveChange(some->entryId, move, At(2025, 1, 1));
    } else {
      calendar_.SaveNew(std::move(arriving), false, At(2025, 1, 1));
    }
    if (Below(3) > 0) plan_.Elements().tmrItems.Tick();
    if (Below(8) == 0) Refresh();
  }

  std::mt19937 random_{static_cast<unsigned>(std::get<int>(GetParam()))};
};

TEST_P(DrawnDays, AreThoseOfTheAppointmentsAndNoCellIsSharedWhateverArrives) {
  std::vector<CalendarItem> items = Items();
  const std::size_t arriving = std::min<std::size_t>(items.size() / 2, 60);
  for (std::size_t i = arriving; i < items.size(); ++i) calendar_.Add(items[i]);
  Start();
  plan_.ChangeYear(std::get<int>(GetParam()) - plan_.DisplayedYear());
  Refresh();
  const auto expectNoFaults = [&] {
    const Faults faults = FaultsOf(plan_.Grid());
    EXPECT_EQ(faults.Count(), 0U) << faults.outside << " outside, " << faults.missing
                                  << " missing, " << faults.shared << " shared";
    return faults.Count() == 0;
  };
  ASSERT_TRUE(expectNoFaults());
  for (std::size_t i = 0; i < arriving; ++i) {
    ChangeSomething(items[i]);
    ASSERT_TRUE(expectNoFaults()) << "change " << i;
  }
  RecordProperty("bars", static_cast<int>(plan_.Grid().Layout().bars.size()));
}

std::vector<std::string> Calendars() {
  std::vector<std::string> paths{Generated, SAMPLE_CALENDAR};
  if (const char* more = std::getenv("VELKOR_CALENDARS")) {
    for (const auto& entry : std::filesystem::directory_iterator(more)) {
      if (entry.path().extension() == ".ics") paths.push_back(entry.path().string());
    }
  }
  return paths;
}

INSTANTIATE_TEST_SUITE_P(Calendars, DrawnDays,
                         testing::Combine(testing::ValuesIn(Calendars()), testing::Bool(),
                                          testing::Range(2025, 2028)));

}  // namespace
}  // namespace velkor
