// bench/PointerFigures.cpp: a pointer move over a full year against lookups in its cell map.
#include <random>
#include <vector>

#include "bench/AllocationMeter.h"
#include "bench/Comparison.h"
#include "bench/Figures.h"
#include "bench/SampleEvents.h"
#include "view/GridPointer.h"

namespace velkor {
namespace {

constexpr std::size_t Events = 10'000;
constexpr std::size_t Moves = 20'000;
constexpr int LookupsForAMove = 100;
constexpr Extent PicParent{24000, 15000};
constexpr Twips ScrollBarWidth = 255;

/// A full year and points all over its grid.
class PointerFixture {
 public:
  PointerFixture() {
    grid_.Resize(PicParent, ScrollBarWidth, {});
    std::mt19937 random(5);
    const auto below = [&](Twips bound) {
      return bound * static_cast<double>(random() % 100'000) / 100'000;
    };
    const Twips height = grid_.Geometry().GridHeight(grid_.Layout());
    while (points_.size() < Moves) {
      const Point point{below(grid_.Geometry().GridWidth), below(height)};
      const auto hit = grid_.HitTestAt(point);
      if (!hit) continue;
      points_.push_back(point);
      hits_.push_back(*hit);
    }
  }
  PointerFixture(const PointerFixture&) = delete;
  PointerFixture& operator=(const PointerFixture&) = delete;

  double SecondsOfLookups() {
    return SecondsOf([&] {
      for (int i = 0; i < LookupsForAMove; ++i) {
        for (const GridHit& hit : hits_) benchmark::DoNotOptimize(grid_.EventAt(hit));
      }
    });
  }
  double SecondsOfMoves() {
    return SecondsOf([&] { MoveOver(); });
  }
  void MoveOver() {
    for (const Point& point : points_) benchmark::DoNotOptimize(pointer_.MouseMove(point));
  }
  /// Begins a drag at some free day.
  bool BeginDrag() {
    for (const Point& point : points_) {
      pointer_.MouseMove(point);
      if (pointer_.MouseDown(MouseButton::Left).dragStarted) return true;
    }
    return false;
  }

 private:
  YearGrid grid_ = FilledGrid(Events, Spread::Random);
  GridPointer pointer_{grid_};
  std::vector<Point> points_;
  std::vector<GridHit> hits_;
};

RunFigure MovesOverLookups(bool dragging) {
  return [=](benchmark::State& state) {
    PointerFixture fixture;
    if (dragging && !fixture.BeginDrag()) {
      state.SkipWithError("no drag began");
      return;
    }
    Compare(
        state, 1, [&] { return fixture.SecondsOfLookups(); },
        [&] { return fixture.SecondsOfMoves(); });
  };
}

void PeakOfMoves(benchmark::State& state) {
  PointerFixture fixture;
  std::size_t peak = 0;
  for (auto iteration : state) {
    static_cast<void>(iteration);
    peak = AllocationMeter::PeakOf([&] {
      fixture.MoveOver();
      fixture.BeginDrag();
      fixture.MoveOver();
    });
    state.SetIterationTime(0);
  }
  LeaveFigure(state, static_cast<double>(peak), 0);
}

}  // namespace

void RegisterPointerFigures() {
  constexpr int Iterations = 15;
  RegisterFigure("pointer moves, 10,000 events, over 100 lookups each", Iterations,
                 MovesOverLookups(false));
  RegisterFigure("drag moves, 10,000 events, over 100 lookups each", Iterations,
                 MovesOverLookups(true));
  RegisterFigure("bytes that pointer moves take", 1, PeakOfMoves);
}

}  // namespace velkor
