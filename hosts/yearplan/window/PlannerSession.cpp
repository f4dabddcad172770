// hosts/yearplan/window/PlannerSession.cpp: wiring a calendar file to a control.
#include "hosts/yearplan/window/PlannerSession.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <utility>

#include "categories/LostNames.h"
#include "hosts/CalendarRefresh.h"
#include "hosts/yearplan/CalendarOptions.h"
#include "hosts/yearplan/OfferedColours.h"
#include "hosts/yearplan/SetColours.h"
#include "hosts/yearplan/window/AppointmentInspector.h"
#include "hosts/yearplan/window/OpenSet.h"
#include "model/Status.h"
#include "platform/Forms.h"
#include "platform/MessageBoxes.h"
#include "platform/Platform.h"
#include "platform/desktop/QtText.h"
#include "refresh/RefreshYear.h"
#include "span/CategoryFilter.h"
#include "support/RegIO.h"
#include "values/Error.h"

namespace velkor {
namespace {

/// How often the calendar file's entry is looked at, in milliseconds: the watcher does not see
/// every kind of change on every kind of disk.
constexpr int LookInterval = 2000;

/// The span that is shown first.
DateWindow FirstWindow(Clock& clock) {
  return WindowOf({DisplaySpan{0, 1}.ViewYearOf(clock.Now()), 1});
}

}  // namespace

void SessionShell::ProcessMessages() {
  ++depth_;
  DesktopShell::ProcessMessages();
  --depth_;
}

void SessionShell::OpenPage(const std::string& address) {
  const bool own = address.find('/') == std::string::npos;
  const std::string docs = QCoreApplication::applicationDirPath().toStdString() + "/docs/";
  DesktopShell::OpenPage(own ? docs + address : address);
}

PlannerSession::PlannerSession(const std::string& calendar, SessionSurroundings surroundings)
    : surroundings_(std::move(surroundings)),
      dialogs_(surroundings_.window, calendar),
      inputs_(surroundings_.window),
      progress_(surroundings_.window),
      printer_(surroundings_.window, calendar),
      environment_(calendar),
      cacheUtilities_([this](const Error& error) { Tell(troubles_.other, error.Description()); },
                      surroundings_.cacheUtility),
      listSeparator_(RegIO::ListSeparator(registry_, surroundings_.messages)),
      calendar_(calendar, FirstWindow(clock_), OptionsFor(calendar)),
      outlook_(calendar_.Store(), locale_,
               {.userName = LoginName(),
                .listSeparator = listSeparator_,
                .inspector = [this](OutlookItem& item) { Inspect(item); },
                .post = [this](std::function<void()> work) { Post(std::move(work)); },
                .clock = [this] { return clock_.Now(); }}),
      memoryCache_(
          [this](const RefreshInputs& inputs, const std::function<bool()>& proceed) {
            const RefreshAnswer answer =
                RefreshYear(RequestOf(inputs), outlook_, files_, locale_, proceed);
            return PromptCacheUtilities::Result{static_cast<short>(answer.result), answer.error,
                                                answer.description};
          },
          [this](std::function<void()> work) { Post(std::move(work)); },
          [this](const Error& error) { Tell(troubles_.other, error.Description()); }),
      settings_(surroundings_.settings, calendar_.Path()),
      sleepWatch_(clock_, [this] { plan_->RefreshSoon(); }) {
  Start();
  QObject::connect(&watcher_, &QFileSystemWatcher::fileChanged, &receiver_, [this] { Look(); });
  QObject::connect(&lookTimer_, &QTimer::timeout, &receiver_, [this] { Look(); });
  lookTimer_.start(LookInterval);
  Follow();
}

Platform PlannerSession::MakePlatform() {
  const bool onDisk = environment_.Trouble().empty();
  CacheUtilities& utilities = onDisk ? static_cast<CacheUtilities&>(cacheUtilities_) : memoryCache_;
  return {utilities,    clock_,      dialogs_,
          environment_, files_,      surroundings_.forms,
          inputs_,      locale_,     surroundings_.messages,
          outlook_,     printer_,    progress_,
          registry_,    scrollBars_, settings_,
          shell_};
}

void PlannerSession::Post(std::function<void()> work) {
  QMetaObject::invokeMethod(&receiver_, std::move(work), Qt::QueuedConnection);
}

StoredProperties PlannerSession::Bag() {
  return {surroundings_.settings, Calendar(),
          [this](const std::string& text) { Tell(troubles_.other, text); }};
}

void PlannerSession::Start() {
  plan_ = std::make_unique<YearPlan>(MakePlatform(), *this);
  StoredProperties bag = Bag();
  plan_->ReadProperties(bag);
  OfferFirstColours(calendar_.Folder(), outlook_, locale_, plan_->Properties().TitleName,
                    CategorySeparator(listSeparator_));
  shownSet_.reset();
  ShowSet();
}

/// What the set says of how its calendars look.
void PlannerSession::ShowSet() {
  plan_->ShowDaysOff(calendar_.DaysOff());
  if (calendar_.IsSet() && shownSet_ != calendar_.Set()) {
    shownSet_ = calendar_.Set();
    plan_->ColourBars(ColoursOf(calendar_));
  }
}

CalendarChoice PlannerSession::ChoiceFor(OutlookItem& item) {
  if (!calendar_.IsSet()) return {};
  const std::string entryId = item.EntryID();
  const SetSource* const own = calendar_.SourceOf(entryId);
  CalendarChoice choice{.current = own ? own->id : calendar_.DefaultForNew(),
                        .isNew = entryId.empty()};
  for (const PlaceState& place : calendar_.PlaceStates()) {
    const SetSource* const source = FindSource(calendar_.Set(), place.id);
    if (!source || (source->background && source != own)) continue;
    choice.calendars.push_back(
        {.id = place.id,
         .name = NameOf(*source, place.name),
         .colour = ColourOf(calendar_.Set(), *source),
         .refusal = place.readOnly ? "This calendar is read-only: what is in it cannot be changed "
                                     "or moved here, and nothing can be added."
                                   : ""});
  }
  choice.put = [this, entryId, isNew = choice.isNew](const std::string& id) {
    if (isNew) {
      calendar_.ChooseForNew(id);
    } else {
      calendar_.Move(entryId, id, clock_.Now());
    }
  };
  return choice;
}

void PlannerSession::Inspect(OutlookItem& item) {
  InspectAppointment(surroundings_.window, item, ChoiceFor(item));
  // A new one that was given up takes its calendar with it.
  calendar_.ChooseForNew({});
}

std::vector<std::string> PlannerSession::Remarks() {
  std::vector<std::string> remarks;
  if (!environment_.Trouble().empty()) remarks.push_back(environment_.Trouble());
  std::string lost =
      RemarkOnLostNames(*DefaultCalendarOf(outlook_), locale_, plan_->Properties().TitleName,
                        CategorySeparator(listSeparator_));
  if (!lost.empty()) remarks.push_back(std::move(lost));
  for (const Diagnostic& diagnostic : calendar_.Diagnostics()) {
    remarks.push_back(ToText(diagnostic));
  }
  return remarks;
}

void PlannerSession::Recreate(const PlannerProperties& properties) {
  plan_->Set(properties);
  plan_.reset();
  Start();
}

void PlannerSession::ShowYear(int year) {
  Timer& start = plan_->Elements().tmrStart;
  if (start.Enabled()) start.Tick();
  if (year != plan_->DisplayedYear()) plan_->ChangeYear(year - plan_->DisplayedYear());
}

void PlannerSession::PropertyChanged(std::string_view /*key*/) {
  try {
    StoredProperties bag = Bag();
    plan_->WriteProperties(bag);
  } catch (const Error& error) {
    Tell(troubles_.other, error.Description());
  }
}

void PlannerSession::Tell(std::string& kind, const std::string& text) {
  kind = text;
  const bool both = !troubles_.file.empty() && !troubles_.other.empty();
  surroundings_.onTrouble(troubles_.file + (both ? "; " : "") + troubles_.other);
}

void PlannerSession::StatusChange(std::string_view Msg) {
  // What the last refresh left is over when another one begins.
  if (Msg == status::MessageOf(status::Downloading) && !troubles_.other.empty()) {
    Tell(troubles_.other, {});
  }
  surroundings_.onStatus(std::string(Msg));
}

/// A file that was replaced is another one to the watcher.
void PlannerSession::Follow() {
  for (const std::string& file : calendar_.Files()) {
    const QString path = ToQt(file);
    if (!watcher_.files().contains(path) && QFileInfo::exists(path)) watcher_.addPath(path);
  }
}

void PlannerSession::Look() {
  calendar_.Look([this](const std::string& text) {
    Tell(troubles_.file, text);
    ShowSet();
    if (surroundings_.onCalendars) surroundings_.onCalendars();
  });
  Follow();
}

}  // namespace velkor
