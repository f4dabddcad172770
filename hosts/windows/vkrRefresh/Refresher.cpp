// hosts/windows/vkrRefresh/Refresher.cpp: from the timer to the result code.
#include "hosts/windows/vkrRefresh/Refresher.h"

#include <string>
#include <utility>

#include "hosts/CalendarRefresh.h"
#include "platform/Outlook.h"
#include "platform/windows/system/MessagePump.h"
#include "platform/windows/system/Wide.h"
#include "platform/windows/system/WindowsFiles.h"
#include "platform/windows/system/WindowsLocale.h"

namespace velkor {
namespace {

constexpr UINT_PTR BeginTimer = 1;
constexpr UINT NoTimer = WM_APP;

RefreshAnswer Failed(SynchResult result, long error) {
  RefreshAnswer answer;
  answer.result = result;
  answer.error = error;
  return answer;
}

RefreshAnswer Refresh(const RefreshInputs& inputs, const OpenOutlook& openOutlook,
                      const std::function<bool()>& proceed) {
  const DisplaySpan span{inputs.viewYear, inputs.firstMonth};
  if (!IsValidSpan(span)) return Failed(SynchResult::FetchingFailed, errors::InvalidProcedureCall);
  std::unique_ptr<OutlookApplication> outlook;
  try {
    outlook = openOutlook();
  } catch (const Error& error) {
    return Failed(SynchResult::LogonFailed, error.Number());
  }
  if (!proceed()) return {};
  WindowsFiles files;
  WindowsLocale locale;
  return RefreshPatiently(RequestOf(inputs), *outlook, files, locale, proceed);
}

}  // namespace

Refresher::Refresher(OpenOutlook openOutlook, StartTimer startTimer)
    : openOutlook_(std::move(openOutlook)),
      startTimer_(std::move(startTimer)),
      window_([this](UINT message, WPARAM) { Hear(message); }) {}

bool Refresher::SystemTimer(HWND window, UINT_PTR id) {
  return ::SetTimer(window, id, USER_TIMER_MINIMUM, nullptr) != 0;
}

void Refresher::Start(const RefreshInputs& inputs) {
  if (busy_) {
    throw Error(errors::InvalidProcedureCall, "The cache utility has not completed yet.",
                "VelkorCacheUtility");
  }
  inputs_ = inputs;
  stopped_ = false;
  if (!startTimer_(window_.Get(), BeginTimer) && !::PostMessageW(window_.Get(), NoTimer, 0, 0)) {
    throw SystemError(::GetLastError(), "Neither a timer nor a message can be had");
  }
  busy_ = true;
}

void Refresher::Hear(UINT message) {
  const auto self = shared_from_this();
  if (message == WM_TIMER) {
    ::KillTimer(window_.Get(), BeginTimer);
    Run();
  } else if (message == NoTimer) {
    Complete(SynchResult::TimerNotStarted, 0);
  }
}

void Refresher::Run() {
  RefreshAnswer answer;
  try {
    if (Proceed()) answer = Refresh(inputs_, openOutlook_, [this] { return Proceed(); });
  } catch (const Error& error) {
    answer = Failed(SynchResult::FetchingFailed, error.Number());
  } catch (const std::exception&) {
    answer = Failed(SynchResult::FetchingFailed, 0);
  }
  Complete(answer.result, answer.error);
}

void Refresher::Complete(SynchResult result, long error) {
  busy_ = false;
  // A copy: whoever hears it may end.
  const WriteComplete complete = onComplete;
  if (complete) complete(static_cast<short>(result), error);
}

bool Refresher::Proceed() {
  return ProcessMessages() && !stopped_;
}

}  // namespace velkor
