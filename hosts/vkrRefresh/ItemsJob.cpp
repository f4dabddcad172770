// hosts/vkrRefresh/ItemsJob.cpp: reads calendars for the window or the command that asks.
#include "hosts/vkrRefresh/ItemsJob.h"

#include <algorithm>
#include <utility>

#include "calendar/ics/read/IcsAnswer.h"
#include "calendar/set/CalendarSet.h"
#include "hosts/vkrRefresh/ReadApart.h"

namespace velkor {
namespace {

std::string AnswerOfSet(const std::string& path, const DateWindow& window,
                        const std::vector<std::string>& ids, const ProcessLimits& limits) {
  const CalendarSet set = LoadSet(path);
  std::vector<const SetSource*> sources;
  for (const std::string& id : ids) {
    if (const SetSource* const source = FindSource(set, id)) sources.push_back(source);
  }
  std::vector<std::string> read = ReadApart(sources, window, limits);
  std::string answer;
  auto next = read.begin();
  for (const std::string& id : ids) {
    answer += FindSource(set, id) != nullptr
                  ? std::move(*next++)
                  : EncodeAnswer(Error(errors::CalendarFailed,
                                       "The calendar is no longer in the set.", "Calendar"));
  }
  return answer;
}

}  // namespace

std::string AnswerOfItems(const std::string& path, const DateWindow& window,
                          const std::vector<std::string>& ids, const ProcessLimits& limits) {
  try {
    if (IsSetPath(path)) return AnswerOfSet(path, window, ids, limits);
    const ReadingTime time(limits);
    return EncodeAnswer(ParseIcsFile(path, window));
  } catch (const Error& error) {
    std::string answer;
    for (std::size_t i = 0; i < std::max<std::size_t>(ids.size(), 1); ++i) {
      answer += EncodeAnswer(error);
    }
    return answer;
  }
}

}  // namespace velkor
