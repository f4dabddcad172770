// hosts/yearplan/window/WindowMenus.cpp: the menus' texts, keys and order.
#include "hosts/yearplan/window/WindowMenus.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <utility>

#include "control/YearPlanElements.h"
#include "hosts/yearplan/window/PlannerSession.h"
#include "hosts/yearplan/window/RecentCalendars.h"
#include "platform/desktop/QtText.h"

namespace velkor {
namespace {

/// "team.ics - ~/calendars", where an ampersand is none that marks a key.
QString RecentText(const QFileInfo& file, int number) {
  QString folder = file.absolutePath();
  const QString home = QDir::homePath();
  if (folder == home || folder.startsWith(home + '/')) folder.replace(0, home.size(), '~');
  QString text = file.fileName() + " - " + folder;
  return "&" + QString::number(number) + " " + text.replace('&', "&&");
}

}  // namespace

WindowMenus::WindowMenus(QMainWindow& window, RecentCalendars& recent, MenuSteps steps)
    : window_(window), recent_(recent), steps_(std::move(steps)) {
  MakeFileMenu();
  MakeYearMenu();
  MakeHelpMenu();
}

QAction* WindowMenus::Add(QMenu& menu, const QString& text, const QKeySequence& keys,
                          const std::function<void()>& steps) {
  QAction* const action = menu.addAction(text);
  action->setShortcut(keys);
  QObject::connect(action, &QAction::triggered, &window_, steps);
  return action;
}

QAction* WindowMenus::AddLater(QMenu& menu, const QString& text, const QKeySequence& keys,
                               const std::function<void()>& steps) {
  QAction* const action = Add(menu, text, keys, steps);
  action->setEnabled(false);
  later_ << action;
  return action;
}

void WindowMenus::MakeFileMenu() {
  QMenu& file = *window_.menuBar()->addMenu(QObject::tr("&File"));
  Add(file, QObject::tr("&New Set"), QKeySequence::New, steps_.newSet);
  Add(file, QObject::tr("&Open..."), QKeySequence::Open, steps_.open);
  recentMenu_ = file.addMenu(QObject::tr("Open &Recent"));
  recentMenu_->setObjectName("recent");
  QObject::connect(recentMenu_, &QMenu::aboutToShow, &window_, [this] { FillRecent(); });
  file.addSeparator();
  adding_ = {Add(file, QObject::tr("&Add Calendar File..."), {}, steps_.addFiles),
             Add(file, QObject::tr("Add A&ddress..."), {}, steps_.addAddress),
             Add(file, QObject::tr("Add &Server Calendar..."), {}, steps_.addServer)};
  file.addSeparator();
  AddLater(file, QObject::tr("Sa&ve Set As..."), QKeySequence::SaveAs, steps_.saveSet);
  AddLater(file, QObject::tr("&Print..."), QKeySequence::Print,
           [this] { steps_.press(toolbar_keys::Print); });
  file.addSeparator();
  Add(file, QObject::tr("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q), [this] { window_.close(); });
}

void WindowMenus::MakeYearMenu() {
  QMenu& year = *window_.menuBar()->addMenu(QObject::tr("&Year"));
  AddLater(year, QObject::tr("&Previous Year"), QKeySequence(Qt::ALT | Qt::Key_Left),
           [this] { steps_.press(toolbar_keys::Back); });
  AddLater(year, QObject::tr("&Next Year"), QKeySequence(Qt::ALT | Qt::Key_Right),
           [this] { steps_.press(toolbar_keys::Next); });
  AddLater(year, QObject::tr("Force &Refresh"), QKeySequence(Qt::Key_F5), steps_.refresh);
  year.addSeparator();
  byCalendar_ = year.addAction(QObject::tr("Colour &Bars by Calendar"));
  byCalendar_->setObjectName("colourByCalendar");
  byCalendar_->setCheckable(true);
  byCalendar_->setEnabled(false);
  QObject::connect(byCalendar_, &QAction::triggered, &window_, steps_.colourByCalendar);
  beforeSettings_ = year.addSeparator();
  AddLater(year, QObject::tr("&Settings..."), QKeySequence(Qt::CTRL | Qt::Key_Comma),
           steps_.settings);
}

void WindowMenus::MakeHelpMenu() {
  QMenu& help = *window_.menuBar()->addMenu(QObject::tr("&Help"));
  Add(help, QObject::tr("&Help"), QKeySequence::HelpContents,
      [] { SessionShell().OpenPage("help.html"); });
  AddLater(help, QObject::tr("&About"), {}, steps_.about);
}

void WindowMenus::AddPane(QAction* toggle) {
  auto* const year = qobject_cast<QMenu*>(beforeSettings_->parent());
  year->insertAction(byCalendar_, toggle);
  toggle->setEnabled(false);
  later_ << toggle;
}

void WindowMenus::ShowCalendar() {
  for (QAction* const action : later_) action->setEnabled(true);
}

void WindowMenus::ShowColours(bool byCalendar, bool canChoose) {
  byCalendar_->setChecked(byCalendar);
  byCalendar_->setEnabled(canChoose);
}

/// What is gone is listed all the same: its disk may be away for a while.
void WindowMenus::FillRecent() {
  recentMenu_->clear();
  int number = 0;
  for (const std::string& path : recent_.Paths()) {
    const QFileInfo file(ToQt(path));
    QAction* const entry = Add(*recentMenu_, RecentText(file, ++number), {},
                               [this, path] { steps_.openRecent(path); });
    entry->setEnabled(file.exists());
  }
  recentMenu_->addSeparator();
  Add(*recentMenu_, QObject::tr("&Clear List"), {}, [this] {
    recent_.Clear();
  })->setEnabled(number > 0);
}

}  // namespace velkor
