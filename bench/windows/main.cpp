// bench/windows/main.cpp: drawing a full year by GDI over the bare calls that it makes; the exit
// code is 1 when a figure misses its limit.
#include <cstdio>
#include <cstring>

#include "bench/SampleEvents.h"
#include "bench/windows/GdiCalls.h"
#include "platform/windows/drawing/DibSection.h"
#include "view/GridPainter.h"

namespace velkor {
namespace {

constexpr std::size_t Bars = 10'000;
constexpr double Limit = 1.3;
constexpr int Rounds = 31;
/// The system counts processor time in steps of 10 ms.
constexpr double RoundSeconds = 0.15;

double ProcessorSeconds() {
  FILETIME created;
  FILETIME ended;
  FILETIME inSystem;
  FILETIME inProgram;
  ::GetProcessTimes(::GetCurrentProcess(), &created, &ended, &inSystem, &inProgram);
  const auto seconds = [](const FILETIME& time) {
    return 1e-7 * (4294967296.0 * time.dwHighDateTime + time.dwLowDateTime);
  };
  return seconds(inSystem) + seconds(inProgram);
}

template <typename Work>
double SecondsOf(int times, Work&& work) {
  const double begin = ProcessorSeconds();
  for (int i = 0; i < times; ++i) work();
  ::GdiFlush();
  return ProcessorSeconds() - begin;
}

void DrawAll(Surface& surface, const YearGrid& grid, const Rect& part) {
  const ViewScope scope(surface, part, {0, 0});
  GridPainter painter(surface, grid, Font{}, part);
  painter.Draw({Date::FromYmd(2026, 7, 1), {}, {}});
}

bool SamePixels(const DibSection& a, const DibSection& b) {
  ::GdiFlush();
  const std::size_t bytes =
      sizeof(std::uint32_t) * std::size_t(a.Width()) * std::size_t(a.Height());
  return std::memcmp(a.Row(0), b.Row(0), bytes) == 0;
}

/// Shows one line of the table.
/// @param part  how much of the grid's height is drawn, from its middle
/// @return whether the figure is held
bool ShowFigure(const char* name, bool displaySubject, double part) {
  const YearGrid grid = GridWithBars(Bars, displaySubject);
  const double width = double(grid.Geometry().GridWidth);
  const double height = grid.Geometry().GridHeight(grid.Layout());
  const Rect seen{0, height * (1 - part) / 2, width, height * (1 + part) / 2};
  const auto picture = [&] {
    return DibSection(int(width / TwipsPerPixel) + 1, int(height / TwipsPerPixel) + 1);
  };
  const DibSection drawn = picture();
  const DibSection bare = picture();
  const DibSection scratch = picture();
  GdiSurface fonts(scratch.Dc());
  GdiCalls calls(fonts, scratch.Dc());
  DrawAll(calls, grid, seen);
  // Like the control, which has a surface for each message that tells it to paint.
  const auto draw = [&] {
    GdiSurface surface(drawn.Dc());
    DrawAll(surface, grid, seen);
  };
  const auto replay = [&] { calls.Replay(bare.Dc()); };

  // Both ways must draw the same, or their times say nothing.
  draw();
  replay();
  std::printf("%-66s", name);
  if (static_cast<double>(calls.Count()) < Bars * part / 2 || !SamePixels(drawn, bare)) {
    std::printf("the bare calls are not the pass\n");
    return false;
  }
  int times = 1;
  while (SecondsOf(times, replay) < RoundSeconds) times *= 2;
  double base = 0;
  double subject = 0;
  for (int round = 0; round < Rounds; ++round) {
    base += SecondsOf(times, replay);
    subject += SecondsOf(times, draw);
  }
  const double ratio = subject / base;
  const double msPerRound = 1000.0 / (Rounds * times);
  std::printf("%9.1f%10.1f%8.2f%9.2f  %s\n", subject * msPerRound, base * msPerRound, ratio, Limit,
              ratio <= Limit ? "held" : "MISSED");
  std::fflush(stdout);
  return ratio <= Limit;
}

}  // namespace
}  // namespace velkor

int main() {
  std::printf("%-66s%9s%10s%8s%9s\n", "figure", "ms", "base ms", "ratio", "at most");
  bool held = true;
  for (const bool subjects : {false, true}) {
    const char* const whole = subjects ? "GDI redraw, 10,000 bars with subjects over the bare calls"
                                       : "GDI redraw, 10,000 bars over the bare calls";
    const char* const part = subjects ? "GDI redraw of a tenth with subjects over the bare calls"
                                      : "GDI redraw of a tenth over the bare calls";
    held &= velkor::ShowFigure(whole, subjects, 1);
    held &= velkor::ShowFigure(part, subjects, 0.1);
  }
  return held ? 0 : 1;
}
