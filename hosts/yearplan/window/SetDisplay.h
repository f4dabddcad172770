// hosts/yearplan/window/SetDisplay.h: keeps the calendars on show current, and shows how they are
// in the pane, the notices and the progress.
#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <optional>
#include <string>

#include "hosts/Passwords.h"
#include "hosts/yearplan/window/AddingCalendars.h"
#include "hosts/yearplan/window/SetNotices.h"
#include "hosts/yearplan/window/SleepWatch.h"
#include "hosts/yearplan/window/WindowSync.h"
#include "platform/desktop/DesktopSystem.h"

namespace velkor {

class CalendarPane;
class PlannerSession;
class ProgressLine;

/// What the display shows itself in; all of it outlives it.
struct DisplayParts {
  QWidget& window;
  Settings& settings;
  MessageBoxes& messages;
  CalendarPane& pane;
  NoticeLine& notices;
  ProgressLine& progress;
  /// As PrivateDataFolder gives it; empty where there is none.
  std::string dataFolder;
};

/// Nothing is asked of the network before the year on show was drawn. The rest of the window tells
/// what the user does.
class SetDisplay {
 public:
  explicit SetDisplay(const DisplayParts& parts);

  /// Takes a session that is on show from now on, and outlives what is shown of it; null for none.
  void Follow(PlannerSession* session);
  /// The year was drawn.
  void Begin() { sync_.Begin(); }
  /// The calendars are others, or how they are is.
  void Update();

  /// The user wants it, and is asked again what was put off.
  void SyncAll();
  void SyncNow(const std::string& id);
  void Stop() { sync_.Stop(); }
  void Answer(const std::string& noticeId, std::size_t answer);
  void ExportRefused(const std::string& sourceId) { news_.ExportRefused(sourceId); }
  /// Throws as PrivateDataFolder does.
  AddingSurroundings ForAdding();

 private:
  void UpdateSoon() { soon_.start(); }
  void LookAgain();
  void ShowProgress();

  DisplayParts parts_;
  DesktopClock clock_;
  Passwords passwords_;
  WindowSync sync_;
  SetNotices news_;
  PlannerSession* session_ = nullptr;
  /// Gathers what comes in quick succession.
  QTimer soon_;
  QTimer often_;
  /// Since something was synchronised without a pause.
  QElapsedTimer busy_;
  SleepWatch sleepWatch_;
};

}  // namespace velkor
