// bench/main.cpp: measures all figures; the exit code is 1 when one misses its limit.
#include <benchmark/benchmark.h>

#include <QGuiApplication>

#include "bench/Comparison.h"
#include "bench/Figures.h"

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  velkor::RegisterLayoutFigures();
  velkor::RegisterCacheFigures();
  velkor::RegisterDrawingFigures();
  velkor::FigureReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  if (reporter.Missed() > 0) {
    reporter.GetErrorStream() << "Figures missed: " << reporter.Missed() << '\n';
    return 1;
  }
  return 0;
}
