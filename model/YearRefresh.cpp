// model/YearRefresh.cpp: has the cache file of one year written, and waits for it.
#include "model/YearRefresh.h"

#include <memory>
#include <optional>
#include <string>

#include "model/SynchResult.h"
#include "platform/Platform.h"
#include "platform/System.h"
#include "values/Error.h"

namespace velkor {
namespace {

struct Completion {
  SynchResult result = SynchResult::NothingToReport;
  long error = 0;
};

}  // namespace

bool RefreshAndWait(const Platform& platform, const RefreshInputs& inputs,
                    const std::function<bool()>& goesOn) {
  std::optional<Completion> completion;
  const auto utility =
      platform.cacheUtilities.Create([&completion](short synchResult, long synchError) {
        completion = {static_cast<SynchResult>(synchResult), synchError};
      });
  utility->Start(inputs);
  while (!completion) {
    if (!goesOn()) return false;
    platform.shell.ProcessMessages();
  }
  if (completion->result == SynchResult::CacheWritten) return true;
  const std::string reason =
      MessageOf(completion->result, completion->error, {inputs.cacheFile, inputs.workFile});
  throw Error(completion->error == 0 ? errors::CalendarFailed : completion->error,
              "The year " + std::to_string(inputs.viewYear) + " could not be refreshed" +
                  (reason.empty() ? "" : ": " + reason));
}

}  // namespace velkor
