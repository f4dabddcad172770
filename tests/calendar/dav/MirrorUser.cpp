// tests/calendar/dav/MirrorUser.cpp: edits by the planner's own writer, sent as vkrSync sends them.
#include "tests/calendar/dav/MirrorUser.h"

#include <algorithm>
#include <utility>

#include "calendar/mirror/ReadMirror.h"
#include "calendar/net/HttpClient.h"
#include "calendar/net/NetworkFault.h"
#include "platform/desktop/DesktopSystem.h"

namespace velkor {
namespace {

std::string Joined(const std::vector<std::string>& texts) {
  std::string joined;
  for (const std::string& text : texts) joined += (joined.empty() ? "" : ",") + text;
  return joined;
}

}  // namespace

MirrorUser::MirrorUser(HttpAccess access, std::string url, const std::string& folder)
    : access_(std::move(access)),
      url_(std::move(url)),
      mirror_(folder),
      writer_(mirror_, "Team"),
      outbox_(mirror_) {
  access_.url = url_;
}

ServerSyncResult MirrorUser::Synchronise(const HttpLimits& limits) {
  HttpClient client(access_, limits);
  const ServerSyncResult result = SyncServerCalendar(client, url_, mirror_);
  requests_ = client.RequestCount();
  return result;
}

std::string MirrorUser::Trouble() {
  try {
    Synchronise();
  } catch (const Error& error) {
    return error.Description();
  }
  return "none";
}

std::vector<CalendarItem> MirrorUser::Items() const {
  const DateWindow window{Date::FromYmd(2026, 1, 1), Date::FromYmd(2026, 12, 31)};
  return ReadMirror(mirror_.Folder(), window).items;
}

std::vector<std::string> MirrorUser::Shown() const {
  std::vector<std::string> shown;
  for (const CalendarItem& item : Items()) {
    shown.push_back(item.fields.subject + "|" + Joined(item.fields.categories) + "|" +
                    item.fields.location);
  }
  std::ranges::sort(shown);
  return shown;
}

CalendarItem MirrorUser::Find(const std::string& subject) const {
  for (CalendarItem& item : Items()) {
    if (item.fields.subject == subject) return std::move(item);
  }
  throw Error(errors::CalendarFailed, "no " + subject);
}

void MirrorUser::Add(const std::string& subject) {
  CalendarItem item;
  item.fields.subject = subject;
  item.start = Date::FromFields({2026, 3, 2, 9});
  item.end = Date::FromFields({2026, 3, 2, 10});
  item.lastModified = DesktopClock().Now();
  writer_.WriteNew(item, false);
}

void MirrorUser::Rename(const std::string& subject, const std::string& to) {
  ItemChange change;
  change.subject = to;
  Change(subject, change);
}

void MirrorUser::SetPlace(const std::string& subject, const std::string& place) {
  ItemChange change;
  change.location = place;
  Change(subject, change);
}

void MirrorUser::SetCategories(const std::string& subject,
                               const std::vector<std::string>& categories) {
  ItemChange change;
  change.categories = categories;
  Change(subject, change);
}

void MirrorUser::Change(const std::string& subject, const ItemChange& change) {
  CalendarItem after = WithChange(Find(subject), change);
  after.lastModified = DesktopClock().Now();
  writer_.WriteChange(after, change);
}

void MirrorUser::Delete(const std::string& subject) {
  writer_.WriteDeletion(Find(subject));
}

}  // namespace velkor
