// hosts/windows/StandIn/TestingObject.h: what tests ask of the program beside a calendar's own
// members (Application.Testing); part of the calendar program for tests, never shipped.
#pragma once

#include <string>

#include "hosts/windows/StandIn/NamedMembers.h"

namespace velkor {

/// Its own calls are not counted. Members as CallWatch has them; what it fills and lists is the
/// default calendar.
class TestingObject : public ServedObject<> {
 public:
  explicit TestingObject(StandInSession& session);

 private:
  struct Tables;

  Variant ProcessId(const Call& call);
  Variant Invokes(const Call&) { return Variant(Shared().watch.Calls()); }
  Variant Lookups(const Call&) { return Variant(Shared().watch.Lookups()); }
  Variant MemberCounts(const Call&) { return Variant(Shared().watch.MemberCounts()); }
  /// Tells the watch what argument 0 says.
  template <auto Function>
  Variant Tell(const Call& call);
  Variant RefuseLogon(const Call& call);
  Variant FailMember(const Call& call);

  /// Subject, start, end, number of weeks and, if given, categories; answers with the EntryID.
  Variant AddRecurring(const Call& call);
  /// Subject, start, end: a meeting request and its appointment; answers with its EntryID.
  Variant AddMeeting(const Call& call);
  /// Year and number: appointments of many kinds, without events.
  Variant AddMany(const Call& call);
  /// A line "subject|start|end|categories|allday" for each item.
  Variant ListItems(const Call& call);
  /// Removes every item, with events.
  Variant Clear(const Call& call);

  std::string Save(CalendarItem item);
};

}  // namespace velkor
