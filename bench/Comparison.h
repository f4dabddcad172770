// bench/Comparison.h: how often the time of one piece of work fits into another's.
#pragma once

#include <benchmark/benchmark.h>

#include <ctime>
#include <functional>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace velkor {

/// A figure without a bound is only shown.
inline constexpr double Unbounded = std::numeric_limits<double>::infinity();

/// Names of the counters that a figure leaves in its benchmark's state.
namespace counters {
inline constexpr const char* Ratio = "ratio";
inline constexpr const char* Limit = "limit";
inline constexpr const char* BaseMs = "base_ms";
}  // namespace counters

double Median(std::vector<double> values);

/// Processor time of a call in seconds: what other programs do meanwhile does not count.
template <typename Work>
double SecondsOf(Work&& work) {
  const std::clock_t begin = std::clock();
  work();
  return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

/// Leaves a figure in the state; the reporter shows it and holds it against its limit.
void LeaveFigure(benchmark::State& state, double ratio, double limit);

/// Times the base and the subject in turn, so that a slow moment of the machine meets both. The
/// ratio is that of the medians.
/// @param base, subject  give the seconds that they took, by SecondsOf around what counts
template <typename Base, typename Subject>
void Compare(benchmark::State& state, double limit, Base&& base, Subject&& subject) {
  std::vector<double> baseSeconds;
  std::vector<double> subjectSeconds;
  base();
  subject();
  for (auto iteration : state) {
    static_cast<void>(iteration);
    baseSeconds.push_back(base());
    subjectSeconds.push_back(subject());
    state.SetIterationTime(subjectSeconds.back());
  }
  const double baseMedian = Median(std::move(baseSeconds));
  state.counters[counters::BaseMs] = 1000 * baseMedian;
  LeaveFigure(state, Median(std::move(subjectSeconds)) / baseMedian, limit);
}

/// Measures one figure and leaves it in the state.
using RunFigure = std::function<void(benchmark::State&)>;

void RegisterFigure(const std::string& name, int iterations, const RunFigure& run);

/// Shows one line for each figure and counts those that miss their limit.
class FigureReporter : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;
  int Missed() const { return missed_; }

 private:
  int missed_ = 0;
};

}  // namespace velkor
