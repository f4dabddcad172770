// hosts/vkrRefresh/ItemsJob.cpp: reads a calendar file for the window or the command that asks.
#include "hosts/vkrRefresh/ItemsJob.h"

#include "calendar/ics/read/IcsAnswer.h"

namespace velkor {

std::string AnswerOfItems(const std::string& path, const DateWindow& window,
                          const ProcessLimits& limits) {
  const ReadingTime time(limits);
  try {
    return EncodeAnswer(ParseIcsFile(path, window));
  } catch (const Error& error) {
    return EncodeAnswer(error);
  }
}

}  // namespace velkor
