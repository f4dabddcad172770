// hosts/vkrRefresh/main.cpp: the worker, which does the one job that its arguments tell.
#include <QCoreApplication>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "calendar/ics/read/IcsZones.h"
#include "calendar/set/CalendarSet.h"
#include "hosts/vkrRefresh/ItemsJob.h"
#include "hosts/vkrRefresh/YearJob.h"
#include "values/Text.h"

namespace velkor {
namespace {

constexpr const char* Usage =
    "usage: vkrRefresh MEMORY SECONDS items CALENDAR FROM TO [ID...]\n"
    "       vkrRefresh MEMORY SECONDS year YEAR MONTH CACHEFILE WORKFILE FOLDER CALENDAR\n"
    "items writes what the file CALENDAR holds, or the calendars ID of the set CALENDAR; FROM and\n"
    "TO are seconds since 1899-12-30 in the years 100 to 9999. year replaces the cache file of a "
    "year that begins with MONTH and says "
    "how\n"
    "it went. MEMORY (bytes) and SECONDS bound the reading; both are above 0.\n";

/// What an argument says as a number between two; none for another.
std::optional<long long> NumberIn(const std::string& text, long long least, long long most) {
  const auto number = ParseInteger(text);
  return number && *number >= least && *number <= most ? number : std::nullopt;
}

std::optional<std::string> DoItems(const std::vector<std::string>& job,
                                   const ProcessLimits& limits) {
  constexpr std::ptrdiff_t Count = 4;
  if (std::ssize(job) < Count || job[0] != "items") return std::nullopt;
  if (std::ssize(job) > Count && !IsSetPath(job[1])) return std::nullopt;
  const auto from = ParseInteger(job[2]);
  const auto to = ParseInteger(job[3]);
  if (!from || !to || !IsInCalendar(*from) || !IsInCalendar(*to)) return std::nullopt;
  Hold(limits);
  return AnswerOfItems(job[1], {Date::FromSeconds(*from), Date::FromSeconds(*to)},
                       {job.begin() + Count, job.end()}, limits);
}

std::optional<std::string> DoYear(const std::vector<std::string>& job,
                                  const ProcessLimits& limits) {
  constexpr std::size_t Count = 7;
  constexpr long long Most = 1'000'000;
  if (job.size() != Count || job[0] != "year") return std::nullopt;
  const auto year = NumberIn(job[1], -Most, Most);
  const auto month = NumberIn(job[2], -Most, Most);
  if (!year || !month) return std::nullopt;
  Hold(limits);
  return AnswerOfYear(
      {static_cast<int>(*year), static_cast<int>(*month), job[3], job[4], job[5], job[6]}, limits);
}

/// None for what is no job.
std::optional<std::string> Do(std::vector<std::string> arguments) {
  constexpr long long Most = 1LL << 60;
  if (arguments.size() < 2) return std::nullopt;
  const auto memory = NumberIn(arguments[0], 1, Most);
  const auto seconds = NumberIn(arguments[1], 1, Most);
  if (!memory || !seconds) return std::nullopt;
  const ProcessLimits limits{static_cast<rlim_t>(*memory), static_cast<rlim_t>(*seconds)};
  arguments.erase(arguments.begin(), arguments.begin() + 2);
  auto answer = DoItems(arguments, limits);
  return answer ? std::move(answer) : DoYear(arguments, limits);
}

}  // namespace
}  // namespace velkor

int main(int count, char** arguments) {
  std::vector<std::string> given(arguments + 1, arguments + count);
  const QCoreApplication application(count, arguments);
  const auto answer = velkor::Do(std::move(given));
  if (!answer) {
    std::fputs(velkor::Usage, stderr);
    return 2;
  }
  const bool written = std::fwrite(answer->data(), 1, answer->size(), stdout) == answer->size();
  return written && std::fflush(stdout) == 0 ? 0 : 1;
}
