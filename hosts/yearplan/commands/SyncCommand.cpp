// hosts/yearplan/commands/SyncCommand.cpp: one run over all sources, with questions on the
// terminal.
#include "hosts/yearplan/commands/SyncCommand.h"

#include <unistd.h>

#include <QEventLoop>
#include <algorithm>
#include <ctime>
#include <iostream>
#include <memory>
#include <optional>
#include <set>
#include <utility>

#include "calendar/mirror/Outbox.h"
#include "calendar/set/LocalPlaces.h"
#include "hosts/Passwords.h"
#include "hosts/SetSync.h"
#include "hosts/TrustedHosts.h"
#include "hosts/yearplan/GivenCalendars.h"
#include "hosts/yearplan/commands/CommandLine.h"
#include "hosts/yearplan/commands/TerminalQuestions.h"
#include "hosts/yearplan/window/OpenSet.h"
#include "platform/desktop/DesktopSettings.h"
#include "platform/desktop/DesktopSystem.h"
#include "platform/desktop/TerminalDialogs.h"
#include "values/Text.h"

namespace velkor {
namespace {

namespace exit_codes {
constexpr int Done = 0;
constexpr int Failed = 1;
constexpr int UserWanted = 3;
}  // namespace exit_codes

constexpr std::size_t Sha256Digits = 64;

/// Colons between the digits, as other programs print them, are left out.
std::pair<std::string, std::string> ParseTrust(const std::string& text) {
  const std::size_t equals = text.find('=');
  std::string digits = equals == std::string::npos ? "" : Replace(text.substr(equals + 1), ":", "");
  for (char& c : digits) c = IsDigit(c) ? c : static_cast<char>(c | 0x20);
  const bool isHash = digits.size() == Sha256Digits &&
                      digits.find_first_not_of("0123456789abcdef") == std::string::npos;
  if (equals == 0 || !isHash) {
    throw UsageError(
        "--trust takes a host and the SHA-256 of its certificate, as in "
        "cal.example.org=64 hexadecimal digits, not \"" +
        text + "\"");
  }
  return {text.substr(0, equals), digits};
}

std::string FirstLine(std::istream& input) {
  std::string line;
  std::getline(input, line);
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

/// One synchronisation of all sources.
class SyncRun {
 public:
  SyncRun(const SyncTask& task, std::vector<SetSource> sources, std::ostream& out,
          std::ostream& messages)
      : task_(task),
        sources_(std::move(sources)),
        out_(out),
        messages_(messages),
        questions_(messages),
        progress_(messages, ::isatty(STDERR_FILENO) != 0),
        dataFolder_(PrivateDataFolder()),
        sync_(dataFolder_, Seams(), Listener()) {
    if (task_.passwordFromInput) input_ = FirstLine(std::cin);
  }

  int Run() {
    for (const SetSource& source : sources_) {
      if (source.kind != SourceKind::File) left_.insert(source.id);
    }
    sync_.Follow(sources_);
    if (!left_.empty()) loop_.exec();
    report_.reset();
    if (failed_) return exit_codes::Failed;
    return userWanted_ ? exit_codes::UserWanted : exit_codes::Done;
  }

 private:
  struct Steps {
    SyncStep step;
    int passwords = 0;
    /// Another try follows.
    bool again = false;
  };

  SetSyncSeams Seams();
  SetSyncListener Listener();
  const SetSource& SourceOf(const std::string& id) const;
  /// For a line of output.
  std::string TitleOf(const SetSource& source) const;
  std::ostream& Messages();
  void FindPassword(const std::string& user, const std::string& host,
                    const Passwords::OnFound& found);
  void ShowProgress();
  void AskToTrust(const std::string& id, const CertificateFault& fault);
  void TakeLogin(const std::string& id, const SyncLogin& login);
  void End(const std::string& id, const SyncOutcome& outcome);
  void TellWhatWaits(const SetSource& source);

  const SyncTask& task_;
  std::vector<SetSource> sources_;
  std::ostream& out_;
  std::ostream& messages_;
  TerminalQuestions questions_;
  TerminalProgress progress_;
  std::unique_ptr<ProgressReport> report_;
  DesktopSettings settings_;
  Passwords passwords_;
  std::optional<std::string> input_;
  std::map<std::string, Steps> steps_;
  std::set<std::string> left_;
  bool failed_ = false;
  bool userWanted_ = false;
  QEventLoop loop_;
  std::string dataFolder_;
  SetSync sync_;
};

SetSyncSeams SyncRun::Seams() {
  return {.now = [] { return static_cast<std::int64_t>(std::time(nullptr)); },
          .trusted =
              [this] {
                auto trusted = TrustedHosts(settings_);
                for (const auto& [host, sha256] : task_.trusted) trusted[host] = sha256;
                return trusted;
              },
          .findPassword = [this](const std::string& user, const std::string& host,
                                 const auto& found) { FindPassword(user, host, found); },
          .forgetPassword = [this](const std::string& user,
                                   const std::string& host) { passwords_.Forget(user, host); }};
}

SetSyncListener SyncRun::Listener() {
  return {
      .onStarted = {},
      .onStep =
          [this](const std::string& id, const SyncStep& step) {
            steps_[id].step = step;
            ShowProgress();
          },
      .onChanged = {},
      .onCertificate = [this](const std::string& id,
                              const CertificateFault& fault) { AskToTrust(id, fault); },
      .onLogin = [this](const std::string& id, const SyncLogin& login) { TakeLogin(id, login); },
      .onEnded = [this](const std::string& id, const SyncOutcome& outcome) { End(id, outcome); }};
}

const SetSource& SyncRun::SourceOf(const std::string& id) const {
  return *std::ranges::find(sources_, id, &SetSource::id);
}

std::string SyncRun::TitleOf(const SetSource& source) const {
  const std::string place = LocalPlaceOf(source, dataFolder_);
  const bool isServer = source.kind == SourceKind::Server;
  return Printable(NameOf(source, isServer ? Mirror(place).State().displayName : ""));
}

/// For a line of its own.
std::ostream& SyncRun::Messages() {
  report_.reset();
  return messages_;
}

void SyncRun::FindPassword(const std::string& user, const std::string& host,
                           const Passwords::OnFound& found) {
  if (input_) return found(input_);
  passwords_.Find(user, host, [this, user, host, found](const std::optional<std::string>& known) {
    if (known || !questions_.CanAsk()) return found(known);
    Messages();
    const auto told = questions_.Secret("Password of " + user + " at " + host + ":");
    if (told) passwords_.Remember(user, host, *told, false);
    found(told);
  });
}

void SyncRun::ShowProgress() {
  std::int64_t done = 0;
  std::int64_t of = 0;
  for (const auto& [id, steps] : steps_) {
    done += steps.step.done;
    of += steps.step.of;
  }
  if (!report_) report_ = progress_.Begin("Synchronising");
  report_->Step(static_cast<int>(done), static_cast<int>(of),
                std::to_string(done) + " of " + std::to_string(of));
}

void SyncRun::AskToTrust(const std::string& id, const CertificateFault& fault) {
  std::ostream& messages = Messages();
  messages << "The server " << fault.host << " cannot prove who it is. " << fault.reason
           << "\n  made out for  " << fault.subject << "\n  by            " << fault.issuer
           << "\n  valid         " << fault.from << " to " << fault.until << "\n  SHA-256       "
           << fault.sha256 << '\n';
  if (!questions_.CanAsk()) {
    messages << "To trust it add --trust " << fault.host << '=' << fault.sha256 << ".\n";
    return;
  }
  if (!questions_.Confirms("Trust it for this server from now on?")) return;
  TrustHost(settings_, fault.host, fault.sha256);
  steps_[id].again = true;
}

/// A wrong password may be mistyped.
void SyncRun::TakeLogin(const std::string& id, const SyncLogin& login) {
  constexpr int MostTries = 3;
  if (login.user.empty()) {
    Messages() << "The server " << login.host << " wants a user.\n";
    return;
  }
  steps_[id].again = !input_ && questions_.CanAsk() && ++steps_[id].passwords < MostTries;
}

void SyncRun::End(const std::string& id, const SyncOutcome& outcome) {
  const SetSource& source = SourceOf(id);
  if (std::exchange(steps_[id].again, false)) return sync_.SyncNow(id);
  if (outcome.done) {
    report_.reset();
    out_ << TitleOf(source) << ": up to date" << std::endl;
  } else {
    failed_ = true;
    Messages() << TitleOf(source) << ": " << outcome.reason << '\n';
  }
  if (source.kind == SourceKind::Server) TellWhatWaits(source);
  left_.erase(id);
  if (left_.empty()) loop_.quit();
}

void SyncRun::TellWhatWaits(const SetSource& source) {
  Mirror mirror(LocalPlaceOf(source, dataFolder_));
  const Outbox outbox(mirror);
  const auto untold = std::ranges::count(outbox.Refused(), false, &RefusedEdit::told);
  if (untold == 0 && outbox.Questions().empty()) return;
  userWanted_ = true;
  Messages() << TitleOf(source) << ": something waits for your answer in the window.\n";
}

}  // namespace

SyncTask ParseSyncTask(bool passwordFromInput, const std::vector<std::string>& trust) {
  SyncTask task{passwordFromInput, {}};
  for (const std::string& each : trust) task.trusted.insert(ParseTrust(each));
  return task;
}

void CheckCanBeSynchronised(const std::vector<std::string>& calendars) {
  for (const std::string& calendar : calendars) {
    if (IsSetPath(calendar) || IsCalendarAddress(calendar)) continue;
    throw UsageError("sync takes sets (.yearplan) and addresses; \"" + calendar +
                     "\" is a file, which is always up to date");
  }
}

int Synchronise(const std::string& set, const SyncTask& task, std::ostream& out,
                std::ostream& messages) {
  return SyncRun(task, LoadSet(set).sources, out, messages).Run();
}

}  // namespace velkor
