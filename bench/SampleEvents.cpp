// bench/SampleEvents.cpp: large years to measure with, the same in every run.
#include "bench/SampleEvents.h"

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

namespace velkor {
namespace {

using Random = std::mt19937;

constexpr std::array<std::string_view, 6> Names{"Leave",    "Trip",     "Training",
                                                "Birthday", "Holidays", "Other"};
constexpr std::array<std::string_view, 8> Subjects{
    "Review with the team",   "Zoë & François: dîner", "Quarterly planning",
    "Müller, Jürgen: Urlaub", "Visit of the auditors", "Train to the fair 12",
    "Call about the budget",  "Release of version 4"};
constexpr int Year = 2026;
constexpr Extent PicParent{24000, 15000};
constexpr Twips ScrollBarWidth = 255;

/// Uniform from 0 to `bound` - 1; the library's distributions differ from one system to the next.
int Below(Random& random, int bound) {
  return static_cast<int>(random() % static_cast<unsigned>(bound));
}

std::string Identifier(Random& random, std::size_t length) {
  constexpr std::string_view Digits = "0123456789ABCDEF";
  std::string id;
  id.reserve(length);
  while (id.size() < length) id.push_back(Digits[random() % 16]);
  return id;
}

std::string SomeCategories(Random& random) {
  const auto name = [&] { return std::string(Names[random() % Names.size()]); };
  const int count = Below(random, 3);
  if (count == 0) return {};
  return count == 1 ? name() : name() + ", " + name();
}

int RandomLength(Random& random) {
  const int kind = Below(random, 100);
  if (kind < 85) return 1;
  return kind < 98 ? 2 + Below(random, 20) : 30 + Below(random, 120);
}

std::pair<Date, Date> RandomDates(Random& random) {
  const Date start = Date::FromYmd(Year, 1, 1 + Below(random, 365));
  // Half of them are timed appointments.
  if (Below(random, 2) == 0) return {start, start.AddDays(RandomLength(random))};
  const double begin = (8 + Below(random, 10)) / 24.0;
  return {Date(start.Days() + begin), Date(start.Days() + begin + 1 / 48.0)};
}

std::pair<Date, Date> DatesOf(Spread spread, Random& random) {
  Date start = Date::FromYmd(Year, 6, 15);
  switch (spread) {
    case Spread::Random:
      return RandomDates(random);
    case Spread::OneDay:
      break;
    case Spread::OneDayInEveryRow:
      start = Date::FromYmd(Year, 1 + Below(random, 12), 2);
      break;
    case Spread::AcrossAllRows:
      return {Date::FromYmd(Year - 1, 12, 1 + Below(random, 31)), Date::FromYmd(Year + 1, 2, 1)};
  }
  return {start, start.AddDays(1)};
}

}  // namespace

CategoryTable SampleCategories() {
  std::vector<Category> categories;
  for (std::uint8_t i = 0; i < Names.size(); ++i) {
    const auto shade = static_cast<std::uint8_t>(40 * i);
    categories.push_back({std::string(Names[i]), Colour::FromRgb(shade, 120, 200)});
  }
  return CategoryTable(std::move(categories));
}

YearGrid SampleGrid(bool displaySubject) {
  return {DisplaySpan{.ViewYear = Year, .FirstMonth = 1}, SampleCategories(), CategoryFilter(),
          PlannerProperties{.AllEvents = true, .DisplaySubject = displaySubject}};
}

std::vector<CalEvent> SampleEvents(std::size_t count, Spread spread, std::size_t idLength) {
  Random random(1);
  std::vector<CalEvent> events(count);
  for (CalEvent& event : events) {
    event.EventID = Identifier(random, idLength);
    event.Subject = Subjects[random() % Subjects.size()];
    event.Categories = SomeCategories(random);
    std::tie(event.StartDate, event.EndDate) = DatesOf(spread, random);
  }
  std::stable_sort(events.begin(), events.end(),
                   [](const CalEvent& a, const CalEvent& b) { return a.StartDate < b.StartDate; });
  return events;
}

YearGrid FilledGrid(std::size_t count, Spread spread, bool displaySubject) {
  YearGrid grid = SampleGrid(displaySubject);
  const EventFields fields = grid.Fields();
  std::vector<CalEvent> events = SampleEvents(count, spread);
  for (CalEvent& event : events) fields.Derive(event);
  grid.SetEvents(EventCollection(std::move(events)));
  return grid;
}

YearGrid GridWithBars(std::size_t bars, bool displaySubject) {
  // An event may have several, so the number of events is searched for.
  std::size_t events = bars;
  while (true) {
    YearGrid grid = FilledGrid(events, Spread::Random, displaySubject);
    const std::size_t has = grid.Layout().bars.size();
    if (has <= bars) {
      grid.Resize(PicParent, ScrollBarWidth, {});
      return grid;
    }
    events -= std::max<std::size_t>((has - bars) / 2, 1);
  }
}

}  // namespace velkor
