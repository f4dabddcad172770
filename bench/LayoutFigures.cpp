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

/// Twice as many events against half of them.
template <typename Work>
void CompareGrowth(benchmark::State& state, Spread spread, Work work) {
  YearGrid half = FilledGrid(Many / 2, spread);
  YearGrid whole = FilledGrid(Many, spread);
  const auto timed = [&](YearGrid& grid) { return SecondsOf([&] { work(grid); }); };
  Compare(
      state, GrowthLimit, [&] { return timed(half); }, [&] { return timed(whole); });
}

void LayOutBandsOnly(YearGrid& grid) {
  benchmark::DoNotOptimize(LayOutBands(grid.Events(), grid.Rule(), grid.Filter()));
}

void LayOutWithCellMap(YearGrid& grid) {
  grid.LayOut();
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
