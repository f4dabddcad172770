// hosts/SetSync.h: keeps the addresses and server calendars of a set current, each by a process.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "calendar/set/CalendarSet.h"
#include "hosts/SyncMessages.h"
#include "hosts/SyncPlan.h"

class QTimer;

namespace velkor {

class SyncProcess;

/// What is asked for as it is needed.
struct SetSyncSeams {
  /// Seconds since 1970.
  std::function<std::int64_t()> now = {};
  /// Certificates that the user trusts: host to SHA-256.
  std::function<std::map<std::string, std::string>()> trusted = {};
  /// Calls `found` with the password of a user, at once or later; none: nobody knows it.
  std::function<void(const std::string& user, const std::string& host,
                     std::function<void(const std::optional<std::string>&)> found)>
      findPassword = {};
  /// The server does not take the password that was found.
  std::function<void(const std::string& user, const std::string& host)> forgetPassword = {};
  /// Empty for vkrSync beside the running program.
  std::string program = {};
};

/// Told from the event loop, by the source's identifier; sources of one account tell the same one
/// after another. What is left out is not told. They may call all of SetSync, but not destroy it.
struct SetSyncListener {
  std::function<void(const std::string& id)> onStarted = {};
  std::function<void(const std::string& id, const SyncStep& step)> onStep = {};
  /// Its copy or mirror is another one now.
  std::function<void(const std::string& id)> onChanged = {};
  /// The source is left alone until SyncNow.
  std::function<void(const std::string& id, const CertificateFault& fault)> onCertificate = {};
  std::function<void(const std::string& id, const SyncLogin& login)> onLogin = {};
  /// The last for one start.
  std::function<void(const std::string& id, const SyncOutcome& outcome)> onEnded = {};
};

/// The host of a URL as passwords and certificates are kept for; empty for what is no URL.
std::string HostOf(const std::string& url);

/// Never waits. The end of it stops all that runs; whatever is stopped is done again next time.
class SetSync {
 public:
  /// @param dataFolder  as PrivateDataFolder gives it
  SetSync(std::string dataFolder, SetSyncSeams seams, SetSyncListener listener);
  ~SetSync();
  SetSync(const SetSync&) = delete;
  SetSync& operator=(const SetSync&) = delete;

  /// The sources of the set as they are now; files are left out. New ones are due at once, those
  /// that are gone, or lead elsewhere, are stopped.
  void Follow(const std::vector<SetSource>& sources);
  /// The user wants it, or has answered a question.
  void SyncNow(const std::string& id);
  void SyncAll();
  /// Something waits to be sent.
  void EditsWait(const std::string& id);
  /// Stops what runs until its usual time has gone by; its end is told.
  void Cancel(const std::string& id);
  void CancelAll();

  bool IsBusy(const std::string& id) const { return plan_.IsRunning(id); }
  bool IsBusy() const { return plan_.IsRunning(); }

 private:
  struct Run {
    std::unique_ptr<SyncProcess> process;
    /// A question for the user came up.
    bool asks = false;
  };

  void Later();
  void StartDue();
  void Start(const std::string& id);
  void AskForPassword(const std::string& id);
  void StartWith(const std::string& id, const std::string& password);
  void Tell(const std::string& id, const SyncEvent& event);
  void End(const std::string& id, const SyncOutcome& outcome);

  std::string dataFolder_;
  SetSyncSeams seams_;
  SetSyncListener listener_;
  SyncPlan plan_;
  std::map<std::string, SetSource> sources_;
  std::map<std::string, Run> runs_;
  std::unique_ptr<QTimer> timer_;
};

}  // namespace velkor
