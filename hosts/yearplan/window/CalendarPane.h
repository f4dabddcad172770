// hosts/yearplan/window/CalendarPane.h: the list of a set's calendars beside the control.
#pragma once

#include <QList>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "hosts/yearplan/window/CalendarRow.h"

class QAction;
class QLabel;
class QListWidget;
class QListWidgetItem;
class QMenu;
class QToolButton;

namespace velkor {

/// What the user wants of one calendar, by its identifier. The pane shows it with the next Show.
struct PaneCommands {
  std::function<void(const std::string& id, bool shown)> show;
  std::function<void(const std::string& id, const std::string& name)> rename;
  std::function<void(const std::string& id, Colour colour)> recolour;
  std::function<void(const std::string& id)> makeDefault;
  std::function<void(const std::string& id, bool daysOff)> markDaysOff;
  std::function<void(const std::string& id)> refresh;
  std::function<void(const std::string& id)> exportRefused;
  /// The user was asked before where edits would be lost.
  std::function<void(const std::string& id)> remove;
};

/// A row for each calendar: a check box, its colour, its name and, below that, its state. F2
/// renames, Space shows and hides, Delete removes, the menu key has the rest.
class CalendarPane : public QWidget {
 public:
  /// @param adding  what adds a calendar; they outlive the pane
  CalendarPane(PaneCommands commands, const QList<QAction*>& adding, QWidget* parent = nullptr);

  /// Replaces all rows; the selected one stays selected.
  void Show(const std::vector<CalendarRow>& rows);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeList();
  QWidget* MakeButtons(const QList<QAction*>& adding);
  void Mirror(QListWidgetItem& item, const CalendarRow& row) const;
  void TakeEdit(const QListWidgetItem& item);
  /// The selected calendar; null for none.
  const CalendarRow* Current() const;
  void FillMenu(QMenu& menu);
  void PopUp(QPoint at);
  void AskForColour();
  void TellReason();
  void AskToRemove();

  PaneCommands commands_;
  std::vector<CalendarRow> rows_;
  QListWidget* list_;
  QLabel* invitation_;
  QToolButton* rowButton_ = nullptr;
};

}  // namespace velkor
