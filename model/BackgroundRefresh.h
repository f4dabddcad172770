// model/BackgroundRefresh.h: has the cache file brought up to date by the cache utility.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "model/CachePaths.h"
#include "platform/CacheUtility.h"
#include "values/Colour.h"

namespace velkor {

class Error;
class Timer;
struct Platform;

/// Starts, counts, cancels and completes refreshes. All runs on the user-interface thread; where
/// it lets messages be processed or shows one, whatever arrives meanwhile may call any member, and
/// may release or destroy this object. A start that is asked for there is only noted: what runs
/// serves it, or it is carried out once when that is over, so that nothing piles up on the stack.
class BackgroundRefresh {
 public:
  /// Platform and timer outlive this.
  /// @param inputs  gives what the next refresh works on
  /// @param reportStatus  takes one of the colours of model/Status.h
  /// @param reloadEvents  called when the cache file was written anew
  BackgroundRefresh(const Platform& platform, Timer& tmrBackground,
                    std::function<RefreshInputs()> inputs, std::function<void(Colour)> reportStatus,
                    std::function<void()> reloadEvents);
  ~BackgroundRefresh();
  BackgroundRefresh(const BackgroundRefresh&) = delete;
  BackgroundRefresh& operator=(const BackgroundRefresh&) = delete;

  /// Drops the cache utility if there is one and creates another; nothing is outstanding then.
  /// Until the first call no refresh starts. Throws Error when it cannot be created; the next
  /// refresh then tries again.
  void CreateCacheUtility();
  /// The same for a utility that is stuck, without errors.
  void ResetCacheUtility();

  /// Starts a refresh unless one is outstanding; `force` cancels that one first. The fourth attempt
  /// in a row that finds one outstanding resets the utility. A utility that cannot be started shows
  /// a message, stops the timer and is created anew next time.
  void StartRefresh(bool force);

  /// Starts that are asked for within `steps` are carried out as one, after them.
  void Together(const std::function<void()>& steps);
  /// The same for steps that bring in what others changed. Many changes fail alike: what their
  /// refresh fails at is told once and not again before one has succeeded; untold, it does not stop
  /// the timer.
  /// @param steps  answers whether the user was told of trouble with the changes already
  void FollowChanges(const std::function<bool()>& steps);
  /// A start or a cancellation runs, or a message of this is open.
  bool Busy() const { return busy_ > 0; }

  /// Cancels an outstanding refresh and waits for its end within bounds.
  /// @return 1 when done, 3 when a cancellation was already running, or a refresh is just being
  /// handed over: that one is cancelled and begun anew afterwards
  short CancelRefresh();

  /// Keeps tmrBackground stopped until ResumeTimer was called as often.
  void PauseTimer();
  /// Lets it run again, unless something else has stopped it.
  void ResumeTimer();
  /// A tick of tmrBackground; every eleventh starts a refresh.
  void OnTimer();
  /// Has the next tick start one.
  void RefreshSoon() { refreshSoon_ = true; }

  bool Outstanding() const { return outstandingCount_ >= 1; }
  /// Requests that were handed to the utility or are about to be, and have not completed.
  int OutstandingCount() const { return outstandingCount_; }
  /// Start attempts in a row that found a refresh outstanding.
  int WaitCount() const { return waitCount_; }
  /// From 1 to 11.
  int TickCount() const { return tickCount_; }
  bool Cancelling() const { return cancelling_; }

  /// Withdraws what is outstanding, stops the timer and lets the utility go: nothing starts before
  /// the next CreateCacheUtility.
  void Disconnect();
  /// Drops the utility for good: nothing starts or completes any more.
  void Release() noexcept;

 private:
  struct Request {
    bool force = false;
    /// A person's or the timer's: what fails is told in any case.
    bool tellsAll = false;
  };
  class BusyScope;

  void Note(bool force);
  void CarryOut();
  void Start(bool force);
  void WriteComplete(short synchResult, long synchError);
  std::string ReactTo(short synchResult, long synchError);
  bool MustWait();
  void Connect();
  void HandOver();
  void GiveUp(const Error& error);
  bool TellTrouble(const std::string& text);
  void TellFileError(long number);
  void Withdraw();
  void StopUtility();
  void AwaitCompletion();
  void LetTimerRun(bool runs);

  const Platform& platform_;
  Timer& tmrBackground_;
  std::function<RefreshInputs()> inputs_;
  std::function<void(Colour)> reportStatus_;
  std::function<void()> reloadEvents_;
  /// Those of the last refresh that was handed over.
  CachePaths paths_;

  /// Shared so that one whose call is on the stack outlives its reset.
  std::shared_ptr<CacheUtility> m_vkCacheUtil;
  /// Expires with the utility whose completions may still count; null before the first one and
  /// after Release.
  std::shared_ptr<char> connection_;
  /// Expires when this is released or destroyed.
  std::shared_ptr<char> life_;

  std::int16_t outstandingCount_ = 0;
  std::int16_t waitCount_ = 0;
  std::int16_t tickCount_ = 1;
  bool cancelling_ = false;
  bool timerRuns_ = false;
  int pauses_ = 0;
  bool refreshSoon_ = false;
  /// The outstanding request is with the utility.
  bool handedOver_ = false;
  /// Number of the last request, so that one that waits sees that it was overtaken or withdrawn.
  std::uint64_t request_ = 0;

  /// How many of those are under way that make a start wait.
  int busy_ = 0;
  /// What was asked for meanwhile.
  std::optional<Request> noted_;
  /// From reading the inputs to the utility's answer.
  bool handingOver_ = false;
  /// What others changed is being brought in.
  bool followsChanges_ = false;
  /// What fails of the last request is told in any case.
  bool tellsAll_ = true;
  /// Something failed since the last success, and the user was told.
  bool troubleTold_ = false;
};

}  // namespace velkor
