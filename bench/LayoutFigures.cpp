// bench/LayoutFigures.cpp: band layout and cell map grow as n log n at worst.
#include <string>
#include <utility>

#include "bench/Comparison.h"
#include "bench/Figures.h"
#include "bench/SampleEvents.h"

namespace velkor {
namespace {

constexpr std::size_t Many = 200'000;
constexpr double GrowthLimit = 2.5;

/// A grid with its events, and the same events once more, to be laid out without it.
struct Year {
  YearGrid grid;
  EventCollection events;
};

Year YearOf(std::size_t count, Spread spread) {
  YearGrid grid = FilledGrid(count, spread);
  EventCollection events = grid.Events();
  return {std::move(grid), std::move(events)};
}

/// Twice as many events against half of them.
template <typename Work>
void CompareGrowth(benchmark::State& state, Spread spread, Work work) {
  Year half = YearOf(Many / 2, spread);
  Year whole = YearOf(Many, spread);
  const auto timed = [&](Year& year) { return SecondsOf([&] { work(year); }); };
  Compare(
      state, GrowthLimit, [&] { return timed(half); }, [&] { return timed(whole); });
}

void LayOutBandsOnly(Year& year) {
  benchmark::DoNotOptimize(LayOutBands(year.events, year.grid.Rule(), year.grid.Filter()));
}

void LayOutWithCellMap(Year& year) {
  year.grid.LayOut();
}

}  // namespace

void RegisterLayoutFigures() {
  for (const auto& [spread, name] : {std::pair{Spread::Random, "random year"},
                                     {Spread::OneDay, "one day"},
                                     {Spread::OneDayInEveryRow, "one day in every row"},
                                     {Spread::AcrossAllRows, "across all rows"}}) {
    const std::string events = std::string(": 200,000 over 100,000, ") + name;
    RegisterFigure("band layout" + events, 31, [spread = spread](benchmark::State& state) {
      CompareGrowth(state, spread, LayOutBandsOnly);
    });
    RegisterFigure("layout and cell map" + events, 15, [spread = spread](benchmark::State& state) {
      CompareGrowth(state, spread, LayOutWithCellMap);
    });
  }
}

}  // namespace velkor
