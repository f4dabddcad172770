// hosts/yearplan/window/CalendarDock.h: the calendar pane at the window's side, as the user left
// it.
#pragma once

#include <QDockWidget>
#include <QList>

#include "hosts/yearplan/window/CalendarPane.h"
#include "platform/Settings.h"

namespace velkor {

/// Whether it is seen is remembered for sets and for single calendars apart; at first sets show it
/// and single calendars do not.
class CalendarDock : public QDockWidget {
 public:
  /// The settings outlive it.
  CalendarDock(Settings& settings, PaneCommands commands, const QList<QAction*>& adding);

  CalendarPane& Pane() { return *pane_; }
  /// The width that it had last, in pixels.
  int RememberedWidth() const;
  /// Shows or hides it as the user left it for such a calendar.
  void ShowFor(bool set);
  void RememberWidth();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void Remember(bool shown);

  Settings& settings_;
  CalendarPane* pane_;
  bool set_ = false;
};

}  // namespace velkor
