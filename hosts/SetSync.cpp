// hosts/SetSync.cpp: the plan's due times, a process for each start, and what follows its end.
#include "hosts/SetSync.h"

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <utility>

#include "calendar/set/LocalPlaces.h"
#include "hosts/SyncProcess.h"

namespace velkor {
namespace {

template <typename Function, typename... Arguments>
void Call(const Function& function, const Arguments&... arguments) {
  if (function) function(arguments...);
}

}  // namespace

std::string HostOf(const std::string& url) {
  return QUrl(QString::fromStdString(url)).host().toStdString();
}

SetSync::SetSync(std::string dataFolder, SetSyncSeams seams, SetSyncListener listener)
    : dataFolder_(std::move(dataFolder)),
      seams_(std::move(seams)),
      listener_(std::move(listener)),
      timer_(std::make_unique<QTimer>()) {
  timer_->setSingleShot(true);
  QObject::connect(timer_.get(), &QTimer::timeout, timer_.get(), [this] { StartDue(); });
}

SetSync::~SetSync() = default;

void SetSync::Follow(const std::vector<SetSource>& sources) {
  std::map<std::string, SetSource> followed;
  for (const SetSource& source : sources) {
    if (source.kind != SourceKind::File) followed.emplace(source.id, source);
  }
  std::vector<std::string> ids;
  std::vector<std::string> kept;
  for (const auto& [id, source] : followed) {
    ids.push_back(id);
    const auto known = sources_.find(id);
    if (known != sources_.end() && PlaceKeyOf(known->second) == PlaceKeyOf(source)) {
      kept.push_back(id);
    }
  }
  std::erase_if(runs_, [&](const auto& run) {
    return std::find(kept.begin(), kept.end(), run.first) == kept.end();
  });
  sources_ = std::move(followed);
  plan_.Follow(kept);
  plan_.Follow(ids);
  Later();
}

void SetSync::SyncNow(const std::string& id) {
  plan_.Want(id);
  Later();
}

void SetSync::SyncAll() {
  for (const auto& [id, source] : sources_) plan_.Want(id);
  Later();
}

void SetSync::EditsWait(const std::string& id) {
  plan_.EditsWait(id);
  Later();
}

void SetSync::Cancel(const std::string& id) {
  if (!plan_.IsRunning(id)) return;
  runs_.erase(id);
  plan_.Stopped(id, seams_.now());
  Call(listener_.onEnded, id, SyncOutcome{.done = false, .reason = "It was stopped."});
  Later();
}

void SetSync::CancelAll() {
  for (const auto& [id, source] : std::map(sources_)) Cancel(id);
}

/// Nothing starts within the caller.
void SetSync::Later() {
  constexpr std::int64_t Longest = 3600;
  const auto due = plan_.NextDue();
  if (!due) return timer_->stop();
  // Not in one go: the clock of the machine may be set, or it may sleep.
  const std::int64_t wait = std::clamp(*due - seams_.now(), std::int64_t{0}, Longest);
  timer_->start(std::chrono::seconds(wait));
}

void SetSync::StartDue() {
  for (const std::string& id : plan_.Start(seams_.now())) {
    // What was told of those before may have ended it.
    if (plan_.IsRunning(id)) Start(id);
  }
  Later();
}

void SetSync::Start(const std::string& id) {
  runs_[id] = {};
  Call(listener_.onStarted, id);
  if (!runs_.contains(id)) return;
  const SetSource& source = sources_.at(id);
  if (source.user.empty()) return StartWith(id, {});
  const QPointer<QTimer> alive(timer_.get());
  seams_.findPassword(source.user, HostOf(source.location),
                      [this, alive, id](const std::optional<std::string>& password) {
                        // Stopped meanwhile, and perhaps begun anew.
                        if (!alive || !runs_.contains(id) || runs_[id].process) return;
                        if (password) return StartWith(id, *password);
                        AskForPassword(id);
                      });
}

void SetSync::AskForPassword(const std::string& id) {
  const SetSource& source = sources_.at(id);
  const SyncLogin login{HostOf(source.location), source.user};
  runs_[id].asks = true;
  Call(listener_.onLogin, id, login);
  End(id, {.done = false,
           .reason = "The server " + login.host + " wants the password of " + login.user + "."});
}

void SetSync::StartWith(const std::string& id, const std::string& password) {
  const SetSource& source = sources_.at(id);
  const bool isServer = source.kind == SourceKind::Server;
  const SyncJob job{.kind = isServer ? SyncJob::Kind::Server : SyncJob::Kind::Address,
                    .location = source.location,
                    .place = LocalPlaceOf(source, dataFolder_),
                    .user = source.user,
                    .password = password,
                    .trusted = seams_.trusted()};
  runs_[id].process = std::make_unique<SyncProcess>(
      job, [this, id](const SyncEvent& event) { Tell(id, event); }, seams_.program);
}

void SetSync::Tell(const std::string& id, const SyncEvent& event) {
  if (const auto* step = std::get_if<SyncStep>(&event)) Call(listener_.onStep, id, *step);
  if (std::holds_alternative<SyncChanged>(event)) Call(listener_.onChanged, id);
  if (const auto* fault = std::get_if<CertificateFault>(&event)) {
    runs_[id].asks = true;
    Call(listener_.onCertificate, id, *fault);
  }
  if (const auto* login = std::get_if<SyncLogin>(&event)) {
    runs_[id].asks = true;
    if (!login->user.empty()) Call(seams_.forgetPassword, login->user, login->host);
    Call(listener_.onLogin, id, *login);
  }
  if (const auto* outcome = std::get_if<SyncOutcome>(&event)) End(id, SyncOutcome(*outcome));
}

void SetSync::End(const std::string& id, const SyncOutcome& outcome) {
  const bool asks = runs_[id].asks;
  runs_.erase(id);
  const std::int64_t now = seams_.now();
  if (outcome.done) {
    plan_.Succeeded(id, now, outcome.interval);
  } else if (asks) {
    plan_.Blocked(id);
  } else {
    plan_.Failed(id, now, outcome.retryAfter);
  }
  Call(listener_.onEnded, id, outcome);
  Later();
}

}  // namespace velkor
