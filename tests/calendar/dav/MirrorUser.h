// tests/calendar/dav/MirrorUser.h: one person with a planner on a server's calendar.
#pragma once

#include <string>
#include <vector>

#include "calendar/CalendarItem.h"
#include "calendar/dav/ServerSync.h"
#include "calendar/mirror/Mirror.h"
#include "calendar/mirror/MirrorWriter.h"
#include "calendar/mirror/Outbox.h"
#include "calendar/net/Http.h"

namespace velkor {

/// Edits are made offline; appointments are known by their subjects, none of which comes twice.
class MirrorUser {
 public:
  /// @param url     of the calendar
  /// @param folder  of the mirror
  MirrorUser(HttpAccess access, std::string url, const std::string& folder);

  ServerSyncResult Synchronise(const HttpLimits& limits = {});
  /// The sentence of the fault that ends it; "none" for none.
  std::string Trouble();
  /// Of the last synchronisation.
  int Requests() const { return requests_; }

  /// As the planner shows them.
  std::vector<CalendarItem> Items() const;
  /// Their subjects with categories and places, "subject|category|place", ascending.
  std::vector<std::string> Shown() const;
  CalendarItem Find(const std::string& subject) const;

  void Add(const std::string& subject);
  void Rename(const std::string& subject, const std::string& to);
  void SetPlace(const std::string& subject, const std::string& place);
  void SetCategories(const std::string& subject, const std::vector<std::string>& categories);
  void Change(const std::string& subject, const ItemChange& change);
  void Delete(const std::string& subject);

  Mirror& Place() { return mirror_; }
  Outbox& Edits() { return outbox_; }

 private:
  HttpAccess access_;
  std::string url_;
  Mirror mirror_;
  MirrorWriter writer_;
  Outbox outbox_;
  int requests_ = 0;
};

}  // namespace velkor
