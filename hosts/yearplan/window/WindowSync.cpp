// hosts/yearplan/window/WindowSync.cpp: what the processes tell, kept for the window.
#include "hosts/yearplan/window/WindowSync.h"

#include <QDateTime>
#include <utility>

#include "hosts/Passwords.h"
#include "hosts/TrustedHosts.h"

namespace velkor {

WindowSync::WindowSync(WindowSyncSurroundings around)
    : around_(std::move(around)),
      sync_(around_.dataFolder,
            {.now = [] { return QDateTime::currentSecsSinceEpoch(); },
             .trusted = [this] { return TrustedHosts(around_.settings); },
             .findPassword =
                 [this](const std::string& user, const std::string& host,
                        std::function<void(const std::optional<std::string>&)> found) {
                   around_.passwords.Find(user, host, std::move(found));
                 },
             .forgetPassword =
                 [this](const std::string& user, const std::string& host) {
                   around_.passwords.Forget(user, host);
                 },
             .program = around_.program},
            {.onStarted = [this](const std::string& id) { Begun(id); },
             .onStep =
                 [this](const std::string& id, const SyncStep& step) {
                   states_[id].step = step;
                   around_.onState();
                 },
             .onChanged = [this](const std::string&) { around_.onLocalChange(); },
             .onCertificate = [this](const std::string& id,
                                     const CertificateFault& it) { states_[id].certificate = it; },
             .onLogin = [this](const std::string& id,
                               const SyncLogin& it) { states_[id].login = it; },
             .onEnded = [this](const std::string& id, const SyncOutcome& it) { Ended(id, it); }}) {}

void WindowSync::Follow(const CalendarSet& set) {
  sources_.clear();
  for (const SetSource& source : set.sources) {
    if (source.kind != SourceKind::File) sources_[source.id] = source;
  }
  std::erase_if(states_, [&](const auto& state) { return !sources_.contains(state.first); });
  for (const auto& [id, source] : sources_) states_.try_emplace(id);
  if (begun_) sync_.Follow(set.sources);
}

void WindowSync::Begin() {
  begun_ = true;
  std::vector<SetSource> sources;
  for (const auto& [id, source] : sources_) sources.push_back(source);
  sync_.Follow(sources);
}

void WindowSync::EditsWait(const std::vector<std::string>& ids) {
  if (!begun_) return;
  for (const std::string& id : ids) sync_.EditsWait(id);
}

const SourceSync* WindowSync::Of(const std::string& id) const {
  const auto found = states_.find(id);
  return found == states_.end() ? nullptr : &found->second;
}

void WindowSync::Begun(const std::string& id) {
  states_[id] = {.running = true};
  around_.onState();
}

void WindowSync::Ended(const std::string& id, const SyncOutcome& outcome) {
  SourceSync& state = states_[id];
  state.running = false;
  state.trouble = outcome.reason;
  state.offline = outcome.offline;
  // Trouble of a mirror and the time of its synchronisation are read with it.
  around_.onLocalChange();
  around_.onState();
}

void WindowSync::Trust(const std::string& id) {
  const SourceSync* const asking = Of(id);
  if (!asking || !asking->certificate) return;
  const CertificateFault certificate = *asking->certificate;
  TrustHost(around_.settings, certificate.host, certificate.sha256);
  for (auto& [other, state] : states_) {
    if (!state.certificate || state.certificate->host != certificate.host) continue;
    state.certificate.reset();
    sync_.SyncNow(other);
  }
}

void WindowSync::LogIn(const std::string& id, const ServerLogin& login) {
  const auto asking = sources_.find(id);
  if (asking == sources_.end()) return;
  const std::string host = HostOf(asking->second.location);
  around_.passwords.Remember(login.user, host, login.password, login.remember,
                             [tell = around_.onTrouble](const std::string& trouble) {
                               if (!trouble.empty()) tell(trouble);
                             });
  for (auto& [other, source] : sources_) {
    if (HostOf(source.location) != host || source.user != login.user) continue;
    states_[other].login.reset();
    sync_.SyncNow(other);
  }
}

}  // namespace velkor
