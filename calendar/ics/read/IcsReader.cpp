// calendar/ics/read/IcsReader.cpp: the worker's job of reading, and its answers taken apart.
#include "calendar/ics/read/IcsReader.h"

#include <algorithm>
#include <utility>

#include "calendar/ics/read/IcsAnswer.h"

namespace velkor {
namespace {

/// Of a set: each calendar has a time limit of its own.
constexpr std::chrono::seconds PatienceForMany{60};

std::vector<std::string> JobOf(const std::string& path, const DateWindow& window,
                               const std::vector<std::string>& ids) {
  std::vector<std::string> job{"items", path, std::to_string(window.from.Seconds()),
                               std::to_string(window.to.Seconds())};
  job.insert(job.end(), ids.begin(), ids.end());
  return job;
}

}  // namespace

IcsReading::IcsReading(std::string path, const DateWindow& window, const WorkerOptions& options,
                       const std::vector<std::string>& ids)
    : WorkerProcess(JobOf(path, window, ids), options,
                    ids.empty() ? std::chrono::seconds(0) : PatienceForMany),
      path_(std::move(path)),
      count_(std::max<std::size_t>(ids.size(), 1)) {}

IcsOutcome IcsReading::FaultOf(const std::string& why) const {
  return {{},
          Error(errors::CalendarFailed,
                "The calendar file " + path_ + " could not be read: " + why + ".", "Calendar")};
}

std::vector<IcsOutcome> IcsReading::Results() const {
  std::vector<IcsOutcome> results;
  std::string_view rest = Answer();
  while (results.size() < count_) {
    try {
      if (!Fault().empty() && (rest.empty() || count_ == 1)) break;
      const bool isLast = results.size() + 1 == count_;
      const std::string_view answer = isLast ? std::exchange(rest, {}) : TakeAnswer(rest);
      results.push_back({DecodeAnswer(answer), {}});
    } catch (const Error& error) {
      const bool isBroken = error.Source() == "Answer";
      results.push_back(isBroken ? FaultOf(error.Description()) : IcsOutcome{{}, error});
      if (isBroken) rest = {};
    }
  }
  while (results.size() < count_) results.push_back(FaultOf(Fault()));
  return results;
}

ParsedCalendar ReadIcsFile(const std::string& path, const DateWindow& window,
                           const WorkerOptions& options) {
  IcsReading reading(path, window, options);
  reading.Wait();
  IcsOutcome outcome = std::move(reading.Results().front());
  if (outcome.error) throw Error(*outcome.error);
  return std::move(outcome.calendar);
}

}  // namespace velkor
