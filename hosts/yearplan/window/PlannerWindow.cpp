// hosts/yearplan/window/PlannerWindow.cpp: menus, status bar, and the change of calendars.
#include "hosts/yearplan/window/PlannerWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>

#include "hosts/yearplan/window/ElidedLabel.h"
#include "hosts/yearplan/window/PlannerSession.h"
#include "hosts/yearplan/window/PlannerWidget.h"
#include "hosts/yearplan/window/SettingsDialog.h"
#include "platform/desktop/QtIcons.h"
#include "platform/desktop/QtPeers.h"
#include "platform/desktop/QtText.h"
#include "values/Error.h"
#include "view/YearGrid.h"
#include "view/YearTexts.h"

namespace velkor {
namespace {

constexpr QSize UsualSize{1280, 800};
constexpr std::string_view Section = "Window";
constexpr const char* GeometryKey = "Geometry";
constexpr const char* CalendarKey = "Calendar";

/// The one local calendar file that is being dragged; empty for anything else.
QString DraggedCalendar(const QMimeData& data) {
  const QList<QUrl> urls = data.urls();
  if (urls.size() != 1 || !urls.front().isLocalFile()) return {};
  const QString path = urls.front().toLocalFile();
  return path.endsWith(QLatin1String(".ics"), Qt::CaseInsensitive) ? path : QString();
}

}  // namespace

PlannerWindow::PlannerWindow(Settings& settings, std::string cacheUtility)
    : settings_(settings,
                [this] {
                  if (session_) ShowRemarks();
                }),
      cacheUtility_(std::move(cacheUtility)) {
  setObjectName("PlannerWindow");
  setWindowTitle(ProgramName);
  setWindowIcon(ProgramIcon());
  setAcceptDrops(true);
  MakeMenus();
  MakeStatusBar();
  setCentralWidget(MakeInvitation());
  resize(FittingSize());
  restoreGeometry(QByteArray::fromBase64(QByteArray::fromStdString(Remembered(GeometryKey))));
}

PlannerWindow::~PlannerWindow() {
  // The peers leave before their elements.
  delete planner_;
}

/// The usual size, or what the screen has room for within a window's frame.
QSize PlannerWindow::FittingSize() const {
  const int title = style()->pixelMetric(QStyle::PM_TitleBarHeight);
  const int edge = style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth);
  const QSize room = screen()->availableSize() - QSize(2 * edge, title + 2 * edge);
  return UsualSize.boundedTo(room);
}

QAction* PlannerWindow::AddAction(QMenu& menu, const QString& text, const QKeySequence& keys,
                                  const std::function<void()>& steps) {
  QAction* const action = menu.addAction(text);
  action->setShortcut(keys);
  connect(action, &QAction::triggered, this, steps);
  return action;
}

void PlannerWindow::AddCalendarAction(QMenu& menu, const QString& text, const QKeySequence& keys,
                                      const std::function<void(YearPlanElements&)>& press) {
  QAction* const action = AddAction(menu, text, keys, [this, press] {
    if (session_) press(session_->Plan().Elements());
  });
  action->setEnabled(false);
  calendarActions_ << action;
}

void PlannerWindow::MakeMenus() {
  const auto button = [](std::string_view key) {
    return [key](YearPlanElements& elements) { elements.Toolbar1.ClickButton(key); };
  };
  QMenu& file = *menuBar()->addMenu(tr("&File"));
  AddAction(file, tr("&Open Calendar..."), QKeySequence::Open, [this] { AskForCalendar(); });
  AddCalendarAction(file, tr("&Print..."), QKeySequence::Print, button(toolbar_keys::Print));
  file.addSeparator();
  AddAction(file, tr("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q), [this] { close(); });

  QMenu& year = *menuBar()->addMenu(tr("&Year"));
  AddCalendarAction(year, tr("&Previous Year"), QKeySequence(Qt::ALT | Qt::Key_Left),
                    button(toolbar_keys::Back));
  AddCalendarAction(year, tr("&Next Year"), QKeySequence(Qt::ALT | Qt::Key_Right),
                    button(toolbar_keys::Next));
  AddCalendarAction(year, tr("Force &Refresh"), QKeySequence(Qt::Key_F5),
                    [](YearPlanElements& elements) { elements.Command1.Click(); });
  year.addSeparator();
  AddCalendarAction(year, tr("&Settings..."), QKeySequence(Qt::CTRL | Qt::Key_Comma),
                    [this](YearPlanElements&) { AskForSettings(); });

  QMenu& help = *menuBar()->addMenu(tr("&Help"));
  AddAction(help, tr("&Help"), QKeySequence::HelpContents,
            [] { SessionShell().OpenPage("help.html"); });
  AddCalendarAction(help, tr("&About"), {},
                    [](YearPlanElements& elements) { elements.mnuAbout.Click(); });
}

void PlannerWindow::MakeStatusBar() {
  status_ = new QLabel;
  status_->setObjectName("status");
  status_->setTextFormat(Qt::PlainText);
  trouble_ = new ElidedLabel;
  trouble_->setObjectName("trouble");
  QFont bold = trouble_->font();
  bold.setBold(true);
  trouble_->setFont(bold);
  remarks_ = new QLabel;
  remarks_->setObjectName("remarks");
  statusBar()->addWidget(status_);
  statusBar()->addWidget(trouble_, 1);
  statusBar()->addPermanentWidget(remarks_);
}

QWidget* PlannerWindow::MakeInvitation() {
  auto* const invitation = new QWidget;
  auto* const text =
      new QLabel(tr("No calendar is open.\nOpen an iCalendar file (.ics), or drop "
                    "one here."));
  text->setAlignment(Qt::AlignCenter);
  auto* const open = new QPushButton(tr("&Open Calendar..."));
  open->setObjectName("open");
  connect(open, &QPushButton::clicked, this, [this] { AskForCalendar(); });
  auto* const rows = new QVBoxLayout(invitation);
  rows->addStretch();
  rows->addWidget(text);
  rows->addWidget(open, 0, Qt::AlignCenter);
  rows->addStretch();
  return invitation;
}

std::string PlannerWindow::Remembered(const char* key) {
  return settings_.Get(SettingsName, Section, key, "");
}

void PlannerWindow::Remember(const char* key, const std::string& value) {
  settings_.Save(SettingsName, Section, key, value);
}

std::string PlannerWindow::LastCalendar() {
  return Remembered(CalendarKey);
}

/// Its dialogs are the control's own, perhaps.
bool PlannerWindow::MustWait() const {
  return (session_ && session_->IsBusy()) || QApplication::activeModalWidget() != nullptr;
}

void PlannerWindow::WhenIdle(Steps steps) {
  constexpr int Pause = 20;
  if (MustWait()) {
    QTimer::singleShot(Pause, this, [this, steps] { WhenIdle(steps); });
  } else {
    steps();
  }
}

bool PlannerWindow::OpenCalendar(const std::string& path, std::optional<int> year) {
  std::unique_ptr<PlannerSession> session;
  const std::string troubleBefore = trouble_->text().toStdString();
  ShowTrouble({});
  try {
    session = std::make_unique<PlannerSession>(
        path, SessionSurroundings{.settings = settings_,
                                  .messages = messages_,
                                  .forms = forms_,
                                  .window = this,
                                  .onStatus = [this](const std::string& text) { ShowStatus(text); },
                                  .onTrouble =
                                      [this](const std::string& text) {
                                        ShowTrouble(text);
                                        if (session_) ShowRemarks();
                                      },
                                  .cacheUtility = cacheUtility_});
  } catch (const Error& error) {
    ShowTrouble(troubleBefore);
    messages_.Show({.text = "The calendar cannot be opened.\n\n" + error.Description(),
                    .title = {},
                    .icon = MessageIcon::Exclamation});
    return false;
  }
  delete planner_;
  planner_ = nullptr;
  session_ = std::move(session);
  ShowPlanner();
  if (year) session_->ShowYear(*year);
  ShowRemarks();
  ShowTitle();
  Remember(CalendarKey, session_->Calendar());
  for (QAction* action : calendarActions_) action->setEnabled(true);
  return true;
}

void PlannerWindow::ShowPlanner() {
  planner_ = new PlannerWidget(session_->Plan());
  setCentralWidget(planner_);
  session_->Plan().Elements().pic1.SetFocus();
}

void PlannerWindow::ShowStatus(const std::string& text) {
  status_->setText(ToQt(text));
  // Another year on show is refreshed at once, which is told.
  if (planner_) ShowTitle();
}

void PlannerWindow::ShowTitle() {
  const QFileInfo file(ToQt(session_->Calendar()));
  const QString year = ToQt(YearName(session_->Plan().Grid().Span()));
  setWindowTitle(tr("%1 - %2 - %3").arg(file.completeBaseName(), year, ProgramName));
}

void PlannerWindow::ShowTrouble(const std::string& text) {
  trouble_->setText(ToQt(text));
  SetToolTip(*trouble_, text);
}

void PlannerWindow::ShowRemarks() {
  std::vector<std::string> all = session_->Remarks();
  if (!settings_.Trouble().empty()) all.insert(all.begin(), settings_.Trouble());
  constexpr std::size_t MostLines = 20;
  std::string lines;
  for (std::size_t i = 0; i < all.size() && i < MostLines; ++i) lines += all[i] + "\n";
  if (all.size() > MostLines) lines += "...";
  const QString count = all.size() == 1 ? tr("1 remark") : tr("%1 remarks").arg(all.size());
  remarks_->setText(all.empty() ? QString() : count);
  SetToolTip(*remarks_, lines);
}

void PlannerWindow::AskForCalendar() {
  const QString folder =
      session_ ? QFileInfo(ToQt(session_->Calendar())).absolutePath() : QString();
  const QString path = QFileDialog::getOpenFileName(this, tr("Open Calendar"), folder,
                                                    tr("Calendars (*.ics);;All files (*)"));
  if (path.isEmpty()) return;
  WhenIdle([this, path] { OpenCalendar(path.toStdString()); });
}

void PlannerWindow::AskForSettings() {
  if (!session_) return;
  const auto properties = velkor::AskForSettings(this, session_->Plan().Properties());
  if (!properties) return;
  WhenIdle([this, wanted = *properties] {
    const int year = session_->Plan().DisplayedYear();
    delete planner_;
    planner_ = nullptr;
    session_->Recreate(wanted);
    ShowPlanner();
    session_->ShowYear(year);
  });
}

void PlannerWindow::closeEvent(QCloseEvent* event) {
  if (MustWait()) {
    event->ignore();
    WhenIdle([this] { close(); });
    return;
  }
  Remember(GeometryKey, saveGeometry().toBase64().toStdString());
  event->accept();
}

void PlannerWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (!DraggedCalendar(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void PlannerWindow::dropEvent(QDropEvent* event) {
  const QString path = DraggedCalendar(*event->mimeData());
  if (path.isEmpty()) return;
  event->acceptProposedAction();
  WhenIdle([this, path] { OpenCalendar(path.toStdString()); });
}

}  // namespace velkor
