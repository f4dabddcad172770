// bench/Comparison.cpp: how often the time of one piece of work fits into another's.
#include "bench/Comparison.h"

#include <algorithm>
#include <cmath>
#include <iomanip>

namespace velkor {

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

void LeaveFigure(benchmark::State& state, double ratio, double limit) {
  state.counters[counters::Ratio] = ratio;
  state.counters[counters::Limit] = limit;
}

void RegisterFigure(const std::string& name, int iterations, const RunFigure& run) {
  benchmark::RegisterBenchmark(name.c_str(), run)
      ->Iterations(iterations)
      ->UseManualTime()
      ->Unit(benchmark::kMillisecond);
}

bool FigureReporter::ReportContext(const Context& context) {
  PrintBasicContext(&GetErrorStream(), context);
  GetOutputStream() << std::left << std::setw(66) << "figure" << std::right << std::setw(9) << "ms"
                    << std::setw(10) << "base ms" << std::setw(8) << "ratio" << std::setw(9)
                    << "at most" << '\n';
  return true;
}

void FigureReporter::ReportRuns(const std::vector<Run>& runs) {
  std::ostream& out = GetOutputStream();
  const auto number = [&](int width, double value, bool known) {
    out << std::setw(width);
    known ? out << value : out << "";
  };
  for (const Run& run : runs) {
    const auto counter = [&](const char* name) {
      const auto found = run.counters.find(name);
      return found == run.counters.end() ? std::nan("") : double{found->second};
    };
    const double ratio = counter(counters::Ratio);
    const double limit = counter(counters::Limit);
    const double baseMs = counter(counters::BaseMs);
    const bool timed = !std::isnan(baseMs);
    // What failed has no ratio, and misses whatever was asked of it.
    const bool holds = !run.error_occurred && ratio <= limit;
    if (!holds) ++missed_;
    out << std::left << std::setw(66) << run.run_name.function_name << std::right << std::fixed
        << std::setprecision(1);
    number(9, ratio * baseMs, timed);
    number(10, baseMs, timed);
    out << std::setprecision(2) << std::setw(8) << ratio;
    number(9, limit, !std::isinf(limit));
    out << "  " << (run.error_occurred ? run.error_message : !holds ? "MISSED" : "");
    if (holds && !std::isinf(limit)) out << "held";
    out << std::endl;
  }
}

}  // namespace velkor
