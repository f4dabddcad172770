// hosts/yearplan/window/PlannerWindow.cpp: menus, status bar, and the change of calendars.
#include "hosts/yearplan/window/PlannerWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>
#include <utility>

#include "hosts/yearplan/window/CalendarDock.h"
#include "hosts/yearplan/window/DroppedCalendars.h"
#include "hosts/yearplan/window/ElidedLabel.h"
#include "hosts/yearplan/window/NoticeLine.h"
#include "hosts/yearplan/window/PlannerSession.h"
#include "hosts/yearplan/window/PlannerWidget.h"
#include "hosts/yearplan/window/ProgressLine.h"
#include "hosts/yearplan/window/SetDisplay.h"
#include "hosts/yearplan/window/SettingsDialog.h"
#include "hosts/yearplan/window/StoredProperties.h"
#include "platform/desktop/DesktopSystem.h"
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

/// Single calendars need none; whatever else does cannot be opened without one, and says why.
std::string DataFolderOrNone() {
  try {
    return PrivateDataFolder();
  } catch (const Error&) {
    return {};
  }
}

}  // namespace

PlannerWindow::PlannerWindow(Settings& settings, std::string cacheUtility)
    : settings_(settings,
                [this] {
                  if (session_) ShowRemarks();
                }),
      cacheUtility_(std::move(cacheUtility)),
      recent_(settings_),
      set_(Surroundings()),
      menus_(*this, recent_, Steps()),
      dock_(new CalendarDock(settings_, ForPane(), menus_.Adding())) {
  setObjectName("PlannerWindow");
  setWindowTitle(ProgramName);
  setWindowIcon(ProgramIcon());
  setAcceptDrops(true);
  MakeStatusBar();
  MakeStage();
  addDockWidget(Qt::RightDockWidgetArea, dock_);
  dock_->hide();
  menus_.AddPane(dock_->toggleViewAction());
  display_ = std::make_unique<SetDisplay>(DisplayParts{.window = *this,
                                                       .settings = settings_,
                                                       .messages = messages_,
                                                       .pane = dock_->Pane(),
                                                       .notices = *notices_,
                                                       .progress = *progress_,
                                                       .dataFolder = DataFolderOrNone()});
  resize(FittingSize());
  restoreGeometry(QByteArray::fromBase64(QByteArray::fromStdString(Remembered(GeometryKey))));
}

PlannerWindow::~PlannerWindow() {
  display_.reset();
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

MenuSteps PlannerWindow::Steps() {
  const auto elements = [this](const std::function<void(YearPlanElements&)>& press) {
    if (session_) press(session_->Plan().Elements());
  };
  return {.newSet = [this] { set_.NewSet(); },
          .open = [this] { AskForCalendar(); },
          .openRecent =
              [this](const std::string& path) { WhenIdle([this, path] { OpenCalendar(path); }); },
          .addFiles = [this] { set_.AskForFiles(); },
          .addAddress = [this] { set_.Add(AskForAddress(display_->ForAdding())); },
          .addServer = [this] { set_.Add(AskForServerCalendars(display_->ForAdding())); },
          .saveSet = [this] { set_.AskForName(); },
          .press =
              [elements](std::string_view key) {
                elements([key](YearPlanElements& all) { all.Toolbar1.ClickButton(key); });
              },
          .refresh =
              [this, elements] {
                display_->SyncAll();
                elements([](YearPlanElements& all) { all.Command1.Click(); });
              },
          .colourByCalendar = [this](bool on) { set_.ColourByCalendar(on); },
          .settings = [this] { AskForSettings(); },
          .about = [elements] { elements([](YearPlanElements& all) { all.mnuAbout.Click(); }); }};
}

PaneCommands PlannerWindow::ForPane() {
  PaneCommands commands = set_.ForPane();
  commands.refresh = [this](const std::string& id) { display_->SyncNow(id); };
  commands.exportRefused = [this](const std::string& id) { display_->ExportRefused(id); };
  return commands;
}

SetSurroundings PlannerWindow::Surroundings() {
  return {
      .window = *this,
      .messages = messages_,
      .open = [this](const std::string& path) { WhenIdle([this, path] { OpenCalendar(path); }); },
      .become = [this](const std::string& path) { WhenIdle([this, path] { OpenAs(path); }); },
      .onChange =
          [this] {
            session_->Look();
            ShowSet();
          }};
}

void PlannerWindow::MakeStage() {
  stage_ = new QWidget;
  notices_ = new NoticeLine(
      [this](const std::string& id, std::size_t answer) { display_->Answer(id, answer); });
  invitation_ = MakeInvitation();
  auto* const rows = new QVBoxLayout(stage_);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  rows->addWidget(notices_);
  rows->addWidget(invitation_, 1);
  setCentralWidget(stage_);
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
  progress_ = new ProgressLine([this] { display_->Stop(); });
  statusBar()->addWidget(status_);
  statusBar()->addWidget(trouble_, 1);
  statusBar()->addPermanentWidget(progress_);
  statusBar()->addPermanentWidget(remarks_);
}

QWidget* PlannerWindow::MakeInvitation() {
  auto* const invitation = new QWidget;
  auto* const text =
      new QLabel(tr("No calendar is open.\nOpen an iCalendar file (.ics) or a set of calendars "
                    "(.yearplan), or drop some here."));
  text->setAlignment(Qt::AlignCenter);
  auto* const open = new QPushButton(tr("&Open..."));
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

void PlannerWindow::WhenIdle(std::function<void()> steps) {
  constexpr int Pause = 20;
  if (MustWait()) {
    QTimer::singleShot(Pause, this, [this, steps] { WhenIdle(steps); });
  } else {
    steps();
  }
}

std::unique_ptr<PlannerSession> PlannerWindow::MakeSession(const std::string& path) {
  return std::make_unique<PlannerSession>(
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
                                .cacheUtility = cacheUtility_,
                                .onCalendars =
                                    [this] {
                                      set_.Reload();
                                      if (display_ && session_) ShowSet();
                                    }});
}

bool PlannerWindow::OpenCalendar(const std::string& path, std::optional<int> year) {
  std::unique_ptr<PlannerSession> session;
  const std::string troubleBefore = trouble_->text().toStdString();
  ShowTrouble({});
  try {
    session = MakeSession(path);
    set_.Follow(session->Calendar());
  } catch (const Error& error) {
    ShowTrouble(troubleBefore);
    messages_.Show({.text = "The calendar cannot be opened.\n\n" + error.Description(),
                    .title = {},
                    .icon = MessageIcon::Exclamation});
    return false;
  }
  display_->Follow(nullptr);
  delete planner_;
  planner_ = nullptr;
  delete std::exchange(invitation_, nullptr);
  session_ = std::move(session);
  ShowPlanner();
  if (year) session_->ShowYear(*year);
  ShowRemarks();
  Remember(CalendarKey, session_->Calendar());
  if (!set_.Open()->IsUnsaved()) recent_.Add(session_->Calendar());
  menus_.ShowCalendar();
  dock_->ShowFor(!set_.Open()->IsSingle());
  resizeDocks({dock_}, {dock_->RememberedWidth()}, Qt::Horizontal);
  display_->Follow(session_.get());
  ShowSet();
  return true;
}

/// Shows what is on show by another path: the year and the properties stay.
void PlannerWindow::OpenAs(const std::string& path) {
  std::optional<int> year;
  if (session_) {
    year = session_->Plan().DisplayedYear();
    StoredProperties bag(settings_, path, [](const std::string&) {});
    session_->Plan().WriteProperties(bag);
  }
  OpenCalendar(path, year);
}

/// What the set says that is on show.
void PlannerWindow::ShowSet() {
  const OpenSet& open = *set_.Open();
  menus_.ShowColours(open.Set().barColours == BarColours::Calendar, !open.IsSingle());
  display_->Update();
  ShowTitle();
}

void PlannerWindow::ShowPlanner() {
  planner_ = new PlannerWidget(session_->Plan());
  dynamic_cast<QVBoxLayout&>(*stage_->layout()).addWidget(planner_, 1);
  session_->Plan().Elements().pic1.SetFocus();
  planner_->findChild<QWidget*>(ToQt(session_->Plan().Elements().pic1.Name()))
      ->installEventFilter(this);
}

/// The first drawing of a year comes before anything that is asked of the network.
bool PlannerWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Paint && session_ && session_->Plan().IsLive()) {
    watched->removeEventFilter(this);
    QTimer::singleShot(0, this, [this] { display_->Begin(); });
  }
  return QMainWindow::eventFilter(watched, event);
}

void PlannerWindow::ShowStatus(const std::string& text) {
  status_->setText(ToQt(text));
  // Another year on show is refreshed at once, which is told.
  if (planner_) ShowTitle();
}

void PlannerWindow::ShowTitle() {
  const QString year = ToQt(YearName(session_->Plan().Grid().Span()));
  setWindowTitle(tr("%1 - %2 - %3").arg(ToQt(set_.Open()->Name()), year, ProgramName));
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
  const QString path = QFileDialog::getOpenFileName(
      this, tr("Open"), folder, tr("Calendars and sets (*.ics *.yearplan);;All files (*)"));
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
  dock_->RememberWidth();
  Remember(GeometryKey, saveGeometry().toBase64().toStdString());
  event->accept();
}

void PlannerWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (!DroppedCalendarsOf(*event->mimeData()).IsEmpty()) event->acceptProposedAction();
}

void PlannerWindow::dropEvent(QDropEvent* event) {
  const DroppedCalendars dropped = DroppedCalendarsOf(*event->mimeData());
  if (dropped.IsEmpty()) return;
  event->acceptProposedAction();
  set_.Drop(dropped.set, dropped.sources);
}

}  // namespace velkor
