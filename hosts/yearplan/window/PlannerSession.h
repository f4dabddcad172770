// hosts/yearplan/window/PlannerSession.h: one calendar file or set with its control and all that
// the control needs.
#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "calendar/EmbeddedOutlook.h"
#include "calendar/set/SetCalendar.h"
#include "control/YearPlan.h"
#include "hosts/yearplan/CalendarPlace.h"
#include "hosts/yearplan/CalendarSettings.h"
#include "hosts/yearplan/window/CalendarChoice.h"
#include "hosts/yearplan/window/SleepWatch.h"
#include "hosts/yearplan/window/StoredProperties.h"
#include "platform/Host.h"
#include "platform/desktop/DesktopLocale.h"
#include "platform/desktop/DesktopRegistry.h"
#include "platform/desktop/DesktopShell.h"
#include "platform/desktop/DesktopSystem.h"
#include "platform/desktop/ProcessCacheUtility.h"
#include "platform/desktop/QtDialogs.h"
#include "platform/desktop/QtPrinter.h"
#include "platform/desktop/QtScrollBars.h"
#include "platform/headless/PromptCacheUtility.h"

class QWidget;

namespace velkor {

class Forms;
class MessageBoxes;

/// What a session finds around it; all of it outlives the session.
struct SessionSurroundings {
  Settings& settings;
  MessageBoxes& messages;
  Forms& forms;
  /// What dialogs open over.
  QWidget* window = nullptr;
  /// Progress of the synchronisation; empty clears the last text.
  std::function<void(const std::string&)> onStatus;
  /// Something that lasts, as a calendar file that cannot be read; empty when it is over.
  std::function<void(const std::string&)> onTrouble;
  /// The cache utility; empty for the one beside the program.
  std::string cacheUtility = {};
  /// The calendars of the set are others, or how they are is; never before the session is made.
  std::function<void()> onCalendars = nullptr;
};

/// Counts how deep the control is inside ProcessMessages, where it must not be taken away, and
/// finds the user's pages.
class SessionShell : public DesktopShell {
 public:
  void ProcessMessages() override;
  /// A page without a folder is one of the product's own, which lie in the folder docs beside the
  /// program.
  void OpenPage(const std::string& address) override;
  bool IsProcessing() const { return depth_ > 0; }

 private:
  int depth_ = 0;
};

/// Everything of one calendar file or set, on the user-interface thread. Follows the files: what
/// other programs save there arrives as item events.
class PlannerSession : public ControlHost {
 public:
  /// Opens the calendar and starts its control. Throws Error when the file cannot be read.
  /// @param calendar  UTF-8
  PlannerSession(const std::string& calendar, SessionSurroundings surroundings);
  PlannerSession(const PlannerSession&) = delete;
  PlannerSession& operator=(const PlannerSession&) = delete;

  /// The absolute path of the calendar file or the set.
  const std::string& Calendar() const { return calendar_.Path(); }
  /// The calendars themselves. Whoever changes their set's file has them looked at.
  SetCalendar& Calendars() { return calendar_; }
  void Look();
  YearPlan& Plan() { return *plan_; }
  /// While the control waits for something, neither it nor this may be destroyed.
  bool IsBusy() const { return shell_.IsProcessing() || progress_.IsOpen(); }
  /// What the file got wrong when it was last read, and what cannot be shown of it.
  std::vector<std::string> Remarks();

  /// Saves the properties and makes the control anew with them. Widgets of the old one are gone
  /// before. Start with the same year by ShowYear.
  void Recreate(const PlannerProperties& properties);
  /// Starts the control, unless it has started, and shows a year.
  void ShowYear(int year);

 private:
  void PropertyChanged(std::string_view key) override;
  void StatusChange(std::string_view Msg) override;

  /// What lasts, by what it is about, so that the end of one does not hide another.
  struct Troubles {
    std::string file;
    std::string other;
  };

  void Tell(std::string& kind, const std::string& text);
  void Inspect(OutlookItem& item);
  CalendarChoice ChoiceFor(OutlookItem& item);
  void ShowSet();
  Platform MakePlatform();
  /// Runs work from the event loop, unless this is gone by then.
  void Post(std::function<void()> work);
  StoredProperties Bag();
  void Start();
  void Follow();

  SessionSurroundings surroundings_;
  Troubles troubles_;
  QtCommonDialogs dialogs_;
  QtInputBoxes inputs_;
  QtProgress progress_;
  QtPrinter printer_;
  QtScrollBars scrollBars_;
  DesktopClock clock_;
  CalendarEnvironment environment_;
  CalendarFiles files_;
  DesktopLocale locale_;
  DesktopRegistry registry_;
  SessionShell shell_;
  ProcessCacheUtilities cacheUtilities_;
  std::string listSeparator_;
  SetCalendar calendar_;
  /// What is delivered later is delivered to it, and so not at all after its end.
  QObject receiver_;
  EmbeddedOutlook outlook_;
  /// For a session without a cache folder: another process sees nothing of its memory.
  PromptCacheUtilities memoryCache_;
  CalendarSettings settings_;
  std::unique_ptr<YearPlan> plan_;
  /// The set as the control shows it; none before that.
  std::optional<CalendarSet> shownSet_;
  QFileSystemWatcher watcher_;
  QTimer lookTimer_;
  SleepWatch sleepWatch_;
};

}  // namespace velkor
