// hosts/windows/StandIn/ZqObjects.cpp: the members of the helper classes.
#include "hosts/windows/StandIn/ZqObjects.h"

#include "support/values/Error.h"

namespace velkor {

struct zqCurrentUser::Tables {
  using Self = zqCurrentUser;
  static constexpr Member Members[] = {
      {"Name", Bound<&Self::Name>},
      {"Cleanup", Bound<&Self::Cleanup>},
  };
  static constexpr ObjectClass CurrentUser = {"zqCurrentUser", 1000, Members};
};

zqCurrentUser::zqCurrentUser(StandInSession& session)
    : ServedObject(session, Tables::CurrentUser) {}

struct zqAppointmentItem::Tables {
  using Self = zqAppointmentItem;
  static constexpr Member Members[] = {
      {"item", Bound<&Self::Item>, true},
      {"Body", Bound<&Self::Body>},
      {"HTMLBody", Bound<&Self::HtmlBody>},
  };
  static constexpr ObjectClass AppointmentItem = {"zqAppointmentItem", 1100, Members};
};

zqAppointmentItem::zqAppointmentItem(StandInSession& session)
    : ServedObject(session, Tables::AppointmentItem) {}

Variant zqAppointmentItem::Item(const Call& call) {
  if (!call.IsPut()) return Variant(item_.Get());
  item_ = call[0].ToObject();
  return {};
}

ItemObject& zqAppointmentItem::Expect() const {
  ComPtr<IDispatch> found;
  if (item_ == nullptr ||
      FAILED(item_->QueryInterface(OwnItemId, reinterpret_cast<void**>(found.GetAddressOf())))) {
    throw Error(errors::CalendarFailed, "No item of this calendar was set.");
  }
  return static_cast<ItemObject&>(*item_.Get());
}

Variant zqAppointmentItem::Body(const Call&) {
  return Variant(Expect().Item().Body());
}

Variant zqAppointmentItem::HtmlBody(const Call&) {
  return Variant(Expect().HtmlBody());
}

}  // namespace velkor
