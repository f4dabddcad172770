// hosts/yearplan/window/SetDisplay.cpp: from the calendars' states to rows, notices and progress.
#include "hosts/yearplan/window/SetDisplay.h"

#include <utility>
#include <vector>

#include "hosts/yearplan/window/CalendarPane.h"
#include "hosts/yearplan/window/CalendarRows.h"
#include "hosts/yearplan/window/OpenSet.h"
#include "hosts/yearplan/window/PlannerSession.h"
#include "hosts/yearplan/window/ProgressLine.h"
#include "platform/MessageBoxes.h"
#include "platform/desktop/QtText.h"

namespace velkor {
namespace {

/// In milliseconds.
constexpr int SoonAfter = 100;
constexpr int OftenEnough = 1000;
/// What takes no longer is not worth a bar.
constexpr int ShortWork = 1500;

}  // namespace

SetDisplay::SetDisplay(const DisplayParts& parts)
    : parts_(parts),
      sync_({.settings = parts.settings,
             .passwords = passwords_,
             .dataFolder = parts.dataFolder,
             .onState = [this] { UpdateSoon(); },
             .onLocalChange = [this] { LookAgain(); },
             .onTrouble =
                 [this](const std::string& text) {
                   parts_.messages.Show(
                       {.text = text, .title = {}, .icon = MessageIcon::Exclamation});
                 }}),
      news_({.window = parts.window,
             .messages = parts.messages,
             .clock = clock_,
             .sync = sync_,
             .dataFolder = parts.dataFolder,
             .onAnswer =
                 [this](const std::string& id) {
                   sync_.EditsWait({id});
                   LookAgain();
                 }}),
      sleepWatch_(clock_, [this] { sync_.SyncAll(); }) {
  soon_.setSingleShot(true);
  soon_.setInterval(SoonAfter);
  QObject::connect(&soon_, &QTimer::timeout, &soon_, [this] { Update(); });
  often_.setInterval(OftenEnough);
  QObject::connect(&often_, &QTimer::timeout, &often_, [this] { Update(); });
}

void SetDisplay::Follow(PlannerSession* session) {
  session_ = session;
  if (!session_) return often_.stop();
  if (session_->Calendars().IsSet()) often_.start();
  Update();
}

void SetDisplay::LookAgain() {
  if (session_) session_->Look();
  UpdateSoon();
}

void SetDisplay::Update() {
  if (!session_) return;
  const SetCalendar& calendar = session_->Calendars();
  sync_.Follow(calendar.Set());
  sync_.EditsWait(calendar.WaitingToBeSent());
  parts_.notices.Show(news_.Look(calendar.Set()));
  parts_.pane.Show(
      RowsOf(calendar, sync_, [this](const std::string& id) { return news_.RefusedOf(id); }));
  ShowProgress();
}

void SetDisplay::ShowProgress() {
  const CalendarSet& set = session_->Calendars().Set();
  SyncStep step;
  std::vector<std::string> names;
  for (const SetSource& source : set.sources) {
    const SourceSync* const sync = sync_.Of(source.id);
    if (!sync || !sync->running) continue;
    names.push_back(NameOf(source));
    step.done += sync->step.done;
    step.of += sync->step.of;
  }
  if (names.empty()) {
    busy_.invalidate();
    return parts_.progress.hide();
  }
  if (!busy_.isValid()) busy_.start();
  if (busy_.elapsed() < ShortWork) return;
  const QString what =
      names.size() == 1 ? ToQt(names.front()) : QObject::tr("%1 calendars").arg(names.size());
  parts_.progress.Show(QObject::tr("Refreshing %1").arg(what), static_cast<int>(step.done),
                       static_cast<int>(step.of));
}

void SetDisplay::SyncAll() {
  news_.AskAgain();
  sync_.SyncAll();
}

void SetDisplay::SyncNow(const std::string& id) {
  news_.AskAgain();
  sync_.SyncNow(id);
}

void SetDisplay::Answer(const std::string& noticeId, std::size_t answer) {
  news_.Answer(noticeId, answer);
  Update();
}

AddingSurroundings SetDisplay::ForAdding() {
  return {.window = &parts_.window,
          .settings = parts_.settings,
          .passwords = passwords_,
          .dataFolder = PrivateDataFolder()};
}

}  // namespace velkor
