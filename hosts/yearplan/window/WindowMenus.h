// hosts/yearplan/window/WindowMenus.h: the menus of the program's window.
#pragma once

#include <QList>
#include <functional>
#include <string>
#include <string_view>

class QAction;
class QKeySequence;
class QMainWindow;
class QMenu;
class QString;

namespace velkor {

class RecentCalendars;

/// What the menus have done. The window does not end while one of them runs.
struct MenuSteps {
  std::function<void()> newSet;
  std::function<void()> open;
  std::function<void(const std::string& path)> openRecent;
  std::function<void()> addFiles;
  std::function<void()> addAddress;
  std::function<void()> addServer;
  std::function<void()> saveSet;
  /// A button of the control's toolbar, by its key.
  std::function<void(std::string_view key)> press;
  std::function<void()> refresh;
  std::function<void(bool)> colourByCalendar;
  std::function<void()> settings;
  std::function<void()> about;
};

/// Makes the menus, whose actions the window owns; at first nothing is on show.
class WindowMenus {
 public:
  /// All outlive this.
  WindowMenus(QMainWindow& window, RecentCalendars& recent, MenuSteps steps);

  /// What adds a calendar.
  const QList<QAction*>& Adding() const { return adding_; }
  /// Adds what shows and hides the calendar pane.
  void AddPane(QAction* toggle);
  /// A calendar is on show from now on.
  void ShowCalendar();
  void ShowColours(bool byCalendar, bool canChoose);

 private:
  QAction* Add(QMenu& menu, const QString& text, const QKeySequence& keys,
               const std::function<void()>& steps);
  /// An action that is live while a calendar is on show.
  QAction* AddLater(QMenu& menu, const QString& text, const QKeySequence& keys,
                    const std::function<void()>& steps);
  void MakeFileMenu();
  void MakeYearMenu();
  void MakeHelpMenu();
  void FillRecent();

  QMainWindow& window_;
  RecentCalendars& recent_;
  MenuSteps steps_;
  QMenu* recentMenu_ = nullptr;
  QAction* beforeSettings_ = nullptr;
  QAction* byCalendar_ = nullptr;
  QList<QAction*> adding_;
  QList<QAction*> later_;
};

}  // namespace velkor
