// hosts/yearplan/window/PlannerWindow.h: the program's window: one calendar, its menus and its
// status.
#pragma once

#include <QLabel>
#include <QMainWindow>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "hosts/yearplan/window/KeptSettings.h"
#include "platform/desktop/QtForms.h"
#include "platform/desktop/QtMessageBoxes.h"

namespace velkor {

class PlannerSession;
class PlannerWidget;
class Settings;
struct YearPlanElements;

/// Shows at most one calendar. Its size and the calendar are remembered in the settings.
class PlannerWindow : public QMainWindow {
 public:
  /// The settings outlive it.
  /// @param cacheUtility  the program vkrRefresh; empty for the one beside this program
  explicit PlannerWindow(Settings& settings, std::string cacheUtility = {});
  ~PlannerWindow() override;

  /// The calendar that was open last; empty when there is none.
  std::string LastCalendar();
  /// Shows another calendar; one that cannot be read is told of, and the one on show stays.
  /// @param year  shown at once; without one the year of today
  bool OpenCalendar(const std::string& path, std::optional<int> year = {});
  /// Asks for a calendar and opens it.
  void AskForCalendar();
  /// Shows and changes the properties of the calendar on show.
  void AskForSettings();

  /// Null while no calendar is on show.
  PlannerSession* Session() { return session_.get(); }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  using Steps = std::function<void()>;

  QSize FittingSize() const;
  QAction* AddAction(QMenu& menu, const QString& text, const QKeySequence& keys,
                     const std::function<void()>& steps);
  /// An action that is live while a calendar is open.
  void AddCalendarAction(QMenu& menu, const QString& text, const QKeySequence& keys,
                         const std::function<void(YearPlanElements&)>& press);
  void MakeMenus();
  void MakeStatusBar();
  QWidget* MakeInvitation();
  bool MustWait() const;
  /// Does something to the control as soon as the control is not waiting itself.
  void WhenIdle(Steps steps);
  void ShowPlanner();
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
  std::unique_ptr<PlannerSession> session_;
  PlannerWidget* planner_ = nullptr;
  QLabel* status_ = nullptr;
  QLabel* trouble_ = nullptr;
  QLabel* remarks_ = nullptr;
  /// Of use only with a calendar.
  QList<QAction*> calendarActions_;
};

}  // namespace velkor
