// hosts/yearplan/window/WindowSync.h: how the synchronisation of each calendar goes, and what it
// waits for.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "hosts/SetSync.h"
#include "hosts/yearplan/window/LoginFields.h"

namespace velkor {

class Passwords;
class Settings;

/// What the synchronisation finds around it; all of it outlives it.
struct WindowSyncSurroundings {
  Settings& settings;
  Passwords& passwords;
  std::string dataFolder = {};
  /// How it goes with a calendar is another.
  std::function<void()> onState = nullptr;
  /// What is read on this machine is another.
  std::function<void()> onLocalChange = nullptr;
  /// Something was not kept; a sentence.
  std::function<void(const std::string&)> onTrouble = nullptr;
  /// The program vkrSync; empty for the one beside this program.
  std::string program = {};
};

/// How it goes with one calendar.
struct SourceSync {
  bool running = false;
  SyncStep step = {};
  /// Why the last try failed; empty when it did not.
  std::string trouble = {};
  bool offline = false;
  /// What it waits for: that the user trusts this, or enters a password.
  std::optional<CertificateFault> certificate = {};
  std::optional<SyncLogin> login = {};
};

class WindowSync {
 public:
  explicit WindowSync(WindowSyncSurroundings around);

  /// The set on show, perhaps another one than before. Nothing runs before Begin.
  void Follow(const CalendarSet& set);
  void Begin();
  void SyncNow(const std::string& id) { sync_.SyncNow(id); }
  void SyncAll() { sync_.SyncAll(); }
  /// Calendars whose edits wait to be sent.
  void EditsWait(const std::vector<std::string>& ids);
  /// Ends what runs; what was done so far stays.
  void Stop() { sync_.CancelAll(); }

  /// Null for a calendar that needs no network.
  const SourceSync* Of(const std::string& id) const;

  /// Trusts the certificate that the calendar waits for.
  void Trust(const std::string& id);
  /// The answer to a question for a password.
  void LogIn(const std::string& id, const ServerLogin& login);

 private:
  void Begun(const std::string& id);
  void Ended(const std::string& id, const SyncOutcome& outcome);

  WindowSyncSurroundings around_;
  std::map<std::string, SetSource> sources_;
  std::map<std::string, SourceSync> states_;
  bool begun_ = false;
  SetSync sync_;
};

}  // namespace velkor
