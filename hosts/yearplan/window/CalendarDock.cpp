// hosts/yearplan/window/CalendarDock.cpp: what is remembered of the pane.
#include "hosts/yearplan/window/CalendarDock.h"

#include <QAction>
#include <QCloseEvent>
#include <utility>

#include "hosts/yearplan/window/StoredProperties.h"

namespace velkor {
namespace {

namespace stored = stored_settings;

constexpr std::string_view Section = "Calendar pane";
constexpr std::string_view WidthKey = "Width";
constexpr int UsualWidth = 240;
constexpr int LeastWidth = 140;

std::string_view KeyOf(bool set) {
  return set ? "Shown for sets" : "Shown for calendars";
}

}  // namespace

CalendarDock::CalendarDock(Settings& settings, PaneCommands commands, const QList<QAction*>& adding)
    : QDockWidget(tr("Calendars")),
      settings_(settings),
      pane_(new CalendarPane(std::move(commands), adding)) {
  setObjectName("CalendarDock");
  setFeatures(DockWidgetClosable);
  setMinimumWidth(LeastWidth);
  setWidget(pane_);
  toggleViewAction()->setText(tr("&Calendars"));
  toggleViewAction()->setShortcut(QKeySequence(Qt::Key_F9));
  // Not `toggled`: it also comes with what hides the whole window.
  connect(toggleViewAction(), &QAction::triggered, this, [this](bool on) { Remember(on); });
}

int CalendarDock::RememberedWidth() const {
  const std::string text =
      settings_.Get(SettingsName, Section, WidthKey, std::to_string(UsualWidth));
  const int width = QString::fromStdString(text).toInt();
  return width < LeastWidth ? UsualWidth : width;
}

void CalendarDock::RememberWidth() {
  if (isVisible()) settings_.Save(SettingsName, Section, WidthKey, std::to_string(width()));
}

void CalendarDock::ShowFor(bool set) {
  set_ = set;
  const std::string_view first = set ? stored::True : stored::False;
  setVisible(settings_.Get(SettingsName, Section, KeyOf(set), first) == stored::True);
}

void CalendarDock::Remember(bool shown) {
  settings_.Save(SettingsName, Section, KeyOf(set_), shown ? stored::True : stored::False);
}

void CalendarDock::closeEvent(QCloseEvent* event) {
  QDockWidget::closeEvent(event);
  Remember(false);
}

}  // namespace velkor
