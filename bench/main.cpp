// bench/main.cpp: measures all figures; the exit code is 1 when one misses its limit.
#include <benchmark/benchmark.h>

#include <malloc.h>

#include <QGuiApplication>
#include <limits>

#include "bench/Comparison.h"
#include "bench/Figures.h"

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  // The allocator keeps what it has: otherwise a block beyond some size comes from the system anew
  // each time, and twice the work costs more than twice for that alone.
  mallopt(M_MMAP_MAX, 0);
  mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
  const QGuiApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  velkor::RegisterLayoutFigures();
  velkor::RegisterCacheFigures();
  velkor::RegisterDrawingFigures();
  velkor::RegisterPointerFigures();
  velkor::RegisterFilterFigures();
  velkor::RegisterExportFigures();
  velkor::RegisterPrintFigures();
  velkor::RegisterRuleFigures();
  velkor::RegisterReadingFigures();
  velkor::RegisterSetFigures();
  velkor::RegisterSyncFigures();
  velkor::FigureReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  if (reporter.Missed() > 0) {
    reporter.GetErrorStream() << "Figures missed: " << reporter.Missed() << '\n';
    return 1;
  }
  return 0;
}
