// tests/servers/CalendarUser.h: one person who plans in a shared calendar: edits a mirror of it,
// and has vkrSync synchronise it.
#pragma once

#include <QProcess>
#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "calendar/CalendarFolder.h"
#include "calendar/mirror/Mirror.h"
#include "calendar/mirror/MirrorWriter.h"
#include "calendar/net/Http.h"

namespace velkor {

/// What each appointment says in the end, by the name of its object.
using CalendarState = std::map<std::string, std::string>;

/// The fields that edits set, and the number of events that the object has, in one text.
std::string StateOfObject(std::string_view bytes);

class CalendarUser {
 public:
  /// @param calendar  its address, and who this is
  CalendarUser(HttpAccess calendar, std::string folder);

  /// Shows what others changed, and this one's own edits upon it.
  void Look();
  /// As this person sees it; empty for none.
  CalendarItem Find(const std::string& name) const;
  bool Has(const std::string& name) const { return folder_.Find(name) != nullptr; }
  /// @return the name of its object
  std::string Create(CalendarItem item);
  void Change(const std::string& name, const ItemChange& change);

  /// Starts vkrSync, which goes on by itself.
  std::unique_ptr<QProcess> StartSynchronising();
  /// Waits until it ends.
  /// @return what it says of a failure; empty for none
  static std::string EndOf(QProcess& synchronising);
  std::string Synchronise();

  /// Objects of the mirror that cannot be read.
  int DamagedObjects() const;
  /// Of what the server had when it was last asked.
  CalendarState State();
  /// Edits that were not sent, for whatever reason.
  std::size_t Unsent();
  /// How often the user is told that somebody else's value gave way or won.
  std::size_t Notes();

 private:
  HttpAccess calendar_;
  Mirror mirror_;
  MirrorWriter writer_;
  CalendarFolder folder_;
};

}  // namespace velkor
