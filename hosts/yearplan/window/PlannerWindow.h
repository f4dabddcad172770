// hosts/yearplan/window/PlannerWindow.h: the program's window: one calendar or set, its menus and
// its status.
#pragma once

#include <QLabel>
#include <QMainWindow>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "hosts/yearplan/window/KeptSettings.h"
#include "hosts/yearplan/window/RecentCalendars.h"
#include "hosts/yearplan/window/SetCommands.h"
#include "hosts/yearplan/window/WindowMenus.h"
#include "platform/desktop/QtForms.h"
#include "platform/desktop/QtMessageBoxes.h"

namespace velkor {

class CalendarDock;
class NoticeLine;
class PlannerSession;
class PlannerWidget;
class ProgressLine;
class SetDisplay;
class Settings;

/// Shows at most one calendar or set. Its size and the calendar are remembered in the settings.
class PlannerWindow : public QMainWindow {
 public:
  /// The settings outlive it.
  /// @param cacheUtility  the program vkrRefresh; empty for the one beside this program
  explicit PlannerWindow(Settings& settings, std::string cacheUtility = {});
  ~PlannerWindow() override;

  /// The calendar that was open last; empty when there is none.
  std::string LastCalendar();
  /// Shows another calendar or set; one that cannot be read is told of, and the one on show stays.
  /// @param year  shown at once; without one the year of today
  bool OpenCalendar(const std::string& path, std::optional<int> year = {});
  /// Asks for a calendar and opens it.
  void AskForCalendar();
  /// Shows and changes the properties of the calendar on show.
  void AskForSettings();

  /// Null while no calendar is on show.
  PlannerSession* Session() { return session_.get(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  QSize FittingSize() const;
  MenuSteps Steps();
  PaneCommands ForPane();
  SetSurroundings Surroundings();
  void MakeStage();
  void MakeStatusBar();
  QWidget* MakeInvitation();
  bool MustWait() const;
  /// Does something to the control as soon as the control is not waiting itself.
  void WhenIdle(std::function<void()> steps);
  std::unique_ptr<PlannerSession> MakeSession(const std::string& path);
  void OpenAs(const std::string& path);
  void ShowPlanner();
  void ShowSet();
  void ShowStatus(const std::string& text);
  void ShowTitle();
  void ShowTrouble(const std::string& text);
  void ShowRemarks();
  void Remember(const char* key, const std::string& value);
  std::string Remembered(const char* key);

  KeptSettings settings_;
  std::string cacheUtility_;
  QtMessageBoxes messages_{this};
  QtForms forms_{this};
  RecentCalendars recent_;
  SetCommands set_;
  WindowMenus menus_;
  CalendarDock* dock_ = nullptr;
  std::unique_ptr<PlannerSession> session_;
  /// Holds the notices and, below them, the planner or the invitation.
  QWidget* stage_ = nullptr;
  NoticeLine* notices_ = nullptr;
  PlannerWidget* planner_ = nullptr;
  QWidget* invitation_ = nullptr;
  QLabel* status_ = nullptr;
  QLabel* trouble_ = nullptr;
  QLabel* remarks_ = nullptr;
  ProgressLine* progress_ = nullptr;
  std::unique_ptr<SetDisplay> display_;
};

}  // namespace velkor
