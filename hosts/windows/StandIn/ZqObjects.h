// hosts/windows/StandIn/ZqObjects.h: the helper classes zqCurrentUser and zqAppointmentItem by
// their names; part of the calendar program for tests, never shipped.
#pragma once

#include "hosts/windows/StandIn/ItemObject.h"

namespace velkor {

class zqCurrentUser : public ServedObject<> {
 public:
  explicit zqCurrentUser(StandInSession& session);

 private:
  struct Tables;

  Variant Name(const Call&) { return Variant(Shared().outlook.CurrentUserName()); }
  Variant Cleanup(const Call&) { return {}; }
};

/// Gives the texts of an item of this process.
class zqAppointmentItem : public ServedObject<> {
 public:
  explicit zqAppointmentItem(StandInSession& session);

 private:
  struct Tables;

  Variant Item(const Call& call);
  Variant Body(const Call& call);
  Variant HtmlBody(const Call& call);
  ItemObject& Expect() const;

  ComPtr<IDispatch> item_;
};

}  // namespace velkor
