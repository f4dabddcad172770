// model/BackgroundRefresh.cpp: the states of a background refresh and what moves it between them.
#include "model/BackgroundRefresh.h"

#include <exception>
#include <string>
#include <utility>

#include "model/Guard.h"
#include "model/Status.h"
#include "model/SynchResult.h"
#include "platform/Elements.h"
#include "platform/Platform.h"
#include "platform/System.h"
#include "support/modFileIO.h"
#include "values/Error.h"

namespace velkor {
namespace {

constexpr std::int16_t TicksToRefresh = 11;
constexpr std::int16_t MostWaits = 3;
constexpr int MostMessageRounds = 2000;
constexpr short CancelDone = 1;
constexpr short CancelRunning = 3;

/// Sets a flag, and clears it at the end unless its owner is gone.
class FlagWhile {
 public:
  FlagWhile(bool& flag, std::weak_ptr<char> owner) : flag_(flag), owner_(std::move(owner)) {
    flag_ = true;
  }
  ~FlagWhile() {
    if (!owner_.expired()) flag_ = false;
  }
  FlagWhile(const FlagWhile&) = delete;
  FlagWhile& operator=(const FlagWhile&) = delete;

 private:
  bool& flag_;
  std::weak_ptr<char> owner_;
};

}  // namespace

/// Something is under way for as long as it lives; the refresh may be gone before.
class BackgroundRefresh::BusyScope {
 public:
  explicit BusyScope(BackgroundRefresh& refresh) : refresh_(refresh), owner_(refresh.life_) {
    ++refresh_.busy_;
  }
  ~BusyScope() {
    if (!owner_.expired()) --refresh_.busy_;
  }
  BusyScope(const BusyScope&) = delete;
  BusyScope& operator=(const BusyScope&) = delete;

 private:
  BackgroundRefresh& refresh_;
  std::weak_ptr<char> owner_;
};

BackgroundRefresh::BackgroundRefresh(const Platform& platform, Timer& tmrBackground,
                                     std::function<RefreshInputs()> inputs,
                                     std::function<void(Colour)> reportStatus,
                                     std::function<void()> reloadEvents)
    : platform_(platform),
      tmrBackground_(tmrBackground),
      inputs_(std::move(inputs)),
      reportStatus_(std::move(reportStatus)),
      reloadEvents_(std::move(reloadEvents)),
      life_(std::make_shared<char>()) {}

BackgroundRefresh::~BackgroundRefresh() {
  Release();
}

void BackgroundRefresh::CreateCacheUtility() {
  if (!life_) return;
  const std::weak_ptr<char> life = life_;
  {
    const BusyScope busy(*this);
    Withdraw();
    waitCount_ = 0;
    Connect();
  }
  if (!life.expired()) CarryOut();
}

void BackgroundRefresh::Connect() {
  connection_ = std::make_shared<char>();
  m_vkCacheUtil.reset();
  const std::weak_ptr<char> connection = connection_;
  std::shared_ptr<CacheUtility> utility =
      platform_.cacheUtilities.Create([this, connection](short synchResult, long synchError) {
        if (!connection.expired()) WriteComplete(synchResult, synchError);
      });
  // Its creation may let messages in, which may have released this or connected it anew.
  if (!connection.expired()) m_vkCacheUtil = std::move(utility);
}

void BackgroundRefresh::ResetCacheUtility() {
  try {
    CreateCacheUtility();
  } catch (const Error&) {
    // The next refresh tries again and tells.
  }
}

void BackgroundRefresh::StartRefresh(bool force) {
  if (!connection_) return;
  Note(force);
  CarryOut();
}

void BackgroundRefresh::Note(bool force) {
  const Request before = noted_.value_or(Request());
  noted_ = Request{before.force || force, before.tellsAll || !followsChanges_};
}

/// Starts what was asked for, unless something is under way: its end comes here again.
void BackgroundRefresh::CarryOut() {
  const std::weak_ptr<char> life = life_;
  while (!life.expired() && busy_ == 0 && connection_ && noted_) {
    const BusyScope busy(*this);
    const Request request = *std::exchange(noted_, std::nullopt);
    tellsAll_ = request.tellsAll;
    Start(request.force);
  }
}

void BackgroundRefresh::Together(const std::function<void()>& steps) {
  const std::weak_ptr<char> life = life_;
  try {
    const BusyScope busy(*this);
    steps();
  } catch (...) {
    if (!life.expired()) CarryOut();
    throw;
  }
  if (!life.expired()) CarryOut();
}

void BackgroundRefresh::FollowChanges(const std::function<bool()>& steps) {
  const std::weak_ptr<char> life = life_;
  Together([&] {
    const FlagWhile follows(followsChanges_, life);
    const bool told = steps();
    if (!life.expired()) troubleTold_ = troubleTold_ || told;
  });
}

void BackgroundRefresh::Start(bool force) {
  const std::weak_ptr<char> life = life_;
  refreshSoon_ = false;
  if (force && Outstanding()) CancelRefresh();
  if (life.expired()) return;
  reportStatus_(status::Starting);
  if (MustWait() || life.expired()) return;

  const std::uint64_t request = ++request_;
  ++outstandingCount_;
  LetTimerRun(true);
  reportStatus_(status::Downloading);
  const auto isCurrent = [&] { return !life.expired() && request == request_; };
  try {
    platform_.shell.ProcessMessages();
    if (isCurrent() && !m_vkCacheUtil) Connect();
    if (isCurrent()) HandOver();
  } catch (const Error& error) {
    if (isCurrent()) GiveUp(error);
    return;
  } catch (...) {
    if (isCurrent()) Withdraw();
    throw;
  }
  if (isCurrent() && Outstanding()) reportStatus_(status::Downloading);
}

/// Counts an attempt that finds a refresh outstanding; false when a new one may start.
bool BackgroundRefresh::MustWait() {
  if (!Outstanding()) {
    waitCount_ = 0;
    return false;
  }
  if (++waitCount_ <= MostWaits) return true;
  ResetCacheUtility();
  return false;
}

void BackgroundRefresh::HandOver() {
  const FlagWhile handingOver(handingOver_, life_);
  const RefreshInputs inputs = inputs_();
  // What was asked for until now is served by these inputs.
  if (const auto served = std::exchange(noted_, std::nullopt)) {
    tellsAll_ = tellsAll_ || served->tellsAll;
  }
  paths_ = {inputs.cacheFile, inputs.workFile};
  const std::shared_ptr<CacheUtility> utility = m_vkCacheUtil;
  handedOver_ = true;
  utility->Start(inputs);
}

/// Ends a start that failed; the timer stays stopped as after every message.
void BackgroundRefresh::GiveUp(const Error& error) {
  Withdraw();
  connection_ = std::make_shared<char>();
  m_vkCacheUtil.reset();
  reportStatus_(status::Idle);
  TellTrouble("Error starting background refresh " + Describe(error));
}

/// Stops the timer and shows a message, or nothing where the last request wants it to be told once
/// and it was.
/// @return whether it was shown
bool BackgroundRefresh::TellTrouble(const std::string& text) {
  if (troubleTold_ && !tellsAll_) return false;
  troubleTold_ = true;
  LetTimerRun(false);
  const BusyScope busy(*this);
  Tell(platform_.messages, text);
  return true;
}

/// Says why the cache file could not be written, where the number tells; the user may want it tried
/// again.
void BackgroundRefresh::TellFileError(long number) {
  using modFileIO::FileErrorAnswer;
  const std::weak_ptr<char> life = life_;
  const BusyScope busy(*this);
  const FileErrorAnswer answer = modFileIO::ReportFileError(platform_.messages, number);
  if (!life.expired() && answer == FileErrorAnswer::Retry) Note(true);
}

/// Forgets an outstanding request, wherever it is.
void BackgroundRefresh::Withdraw() {
  ++request_;
  outstandingCount_ = 0;
  handedOver_ = false;
}

short BackgroundRefresh::CancelRefresh() {
  if (!life_) return CancelDone;
  reportStatus_(status::Failed);
  if (cancelling_ || handingOver_) {
    if (handingOver_) Note(true);
    reportStatus_(status::Neutral);
    return CancelRunning;
  }
  const std::weak_ptr<char> life = life_;
  {
    const BusyScope busy(*this);
    const FlagWhile cancelling(cancelling_, life);
    if (Outstanding()) StopUtility();
    if (life.expired()) return CancelDone;
  }
  reportStatus_(status::Idle);
  // Without a utility it was disconnected meanwhile.
  LetTimerRun(connection_ != nullptr);
  CarryOut();
  return CancelDone;
}

void BackgroundRefresh::StopUtility() {
  if (!handedOver_) {
    // Its start still lets messages be processed; there is nothing to wait for.
    Withdraw();
    return;
  }
  const std::shared_ptr<CacheUtility> utility = m_vkCacheUtil;
  try {
    utility->Stop();
  } catch (const Error&) {
    ResetCacheUtility();
    return;
  }
  AwaitCompletion();
}

void BackgroundRefresh::AwaitCompletion() {
  const std::weak_ptr<char> life = life_;
  for (int round = 0; round < MostMessageRounds; ++round) {
    if (life.expired() || !Outstanding()) return;
    platform_.shell.ProcessMessages();
  }
  if (!life.expired() && Outstanding()) ResetCacheUtility();
}

void BackgroundRefresh::WriteComplete(short synchResult, long synchError) {
  // One that nobody waits for, or that comes before its request was handed over, does not count.
  if (Outstanding() && handedOver_) {
    --outstandingCount_;
    handedOver_ = false;
  }
  reportStatus_(status::Idle);
  LetTimerRun(true);
  const std::weak_ptr<char> life = life_;
  const std::string text = ReactTo(synchResult, synchError);
  if (!life.expired()) CarryOut();
  if (life.expired() || synchError == 0) return;
  throw Error(synchError, text.empty() ? "The cache utility reported an error" : text,
              "VelkorCacheUtility");
}

/// Reloads, or shows the message for a result and returns it.
std::string BackgroundRefresh::ReactTo(short synchResult, long synchError) {
  const auto result = static_cast<SynchResult>(synchResult);
  if (result == SynchResult::CacheWritten) {
    troubleTold_ = false;
    reloadEvents_();
    return {};
  }
  if (result == SynchResult::NothingToReport) return {};
  std::string text = MessageOf(result, synchError, paths_);
  const std::weak_ptr<char> life = life_;
  const bool told = TellTrouble(text);
  if (told && !life.expired() && result == SynchResult::WritingFailed) TellFileError(synchError);
  return text;
}

void BackgroundRefresh::LetTimerRun(bool runs) {
  timerRuns_ = runs;
  tmrBackground_.SetEnabled(runs && pauses_ == 0);
}

void BackgroundRefresh::PauseTimer() {
  ++pauses_;
  LetTimerRun(timerRuns_);
}

void BackgroundRefresh::ResumeTimer() {
  --pauses_;
  LetTimerRun(timerRuns_);
}

void BackgroundRefresh::OnTimer() {
  if (tickCount_ < TicksToRefresh && !refreshSoon_) {
    ++tickCount_;
    return;
  }
  // First, as the start lets other ticks in.
  tickCount_ = 1;
  StartRefresh(false);
}

void BackgroundRefresh::Disconnect() {
  const bool wasOutstanding = Outstanding();
  Withdraw();
  noted_.reset();
  connection_.reset();
  m_vkCacheUtil.reset();
  LetTimerRun(false);
  if (wasOutstanding) reportStatus_(status::Idle);
}

void BackgroundRefresh::Release() noexcept {
  life_.reset();
  connection_.reset();
  m_vkCacheUtil.reset();
}

}  // namespace velkor
