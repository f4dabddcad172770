// tests/standin/ZqObjects.cpp: the members of the helper classes.
#include "tests/standin/ZqObjects.h"

#include "tests/standin/ItemObject.h"
#include "values/Error.h"

namespace velkor {
namespace {

class zqCurrentUser : public ServedObject<> {
 public:
  explicit zqCurrentUser(StandInSession& session) : ServedObject(session, Kind()) {}

 private:
  static const WatchedClass& Kind();

  Variant Name(const Call&) { return Variant(Shared().outlook.CurrentUserName()); }
  Variant Cleanup(const Call&) { return {}; }
};

const WatchedClass& zqCurrentUser::Kind() {
  static constexpr Member Members[] = {
      {"Name", Bound<&zqCurrentUser::Name>},
      {"Cleanup", Bound<&zqCurrentUser::Cleanup>},
  };
  static constexpr WatchedClass CurrentUser = {{"zqCurrentUser", 1000, Members}};
  return CurrentUser;
}

class zqAppointmentItem : public ServedObject<> {
 public:
  explicit zqAppointmentItem(StandInSession& session) : ServedObject(session, Kind()) {}

 private:
  static const WatchedClass& Kind();

  Variant Item(const Call& call) {
    if (!call.IsPut()) return Variant(item_.Get());
    item_ = call[0].ToObject();
    return {};
  }
  Variant Body(const Call&) { return Variant(Expect().Item().Body()); }
  Variant HtmlBody(const Call&) { return Variant(Expect().HtmlBody()); }

  ItemObject& Expect() const {
    ComPtr<IDispatch> found;
    if (item_ == nullptr ||
        FAILED(item_->QueryInterface(OwnItemId, reinterpret_cast<void**>(found.GetAddressOf())))) {
      throw Error(errors::CalendarFailed, "No item of this calendar was set.");
    }
    return static_cast<ItemObject&>(*found.Get());
  }

  ComPtr<IDispatch> item_;
};

const WatchedClass& zqAppointmentItem::Kind() {
  static constexpr Member Members[] = {
      {"item", Bound<&zqAppointmentItem::Item>, true},
      {"Body", Bound<&zqAppointmentItem::Body>},
      {"HTMLBody", Bound<&zqAppointmentItem::HtmlBody>},
  };
  static constexpr WatchedClass AppointmentItem = {{"zqAppointmentItem", 1100, Members}};
  return AppointmentItem;
}

}  // namespace

ComPtr<IDispatch> MakeCurrentUser(StandInSession& session) {
  return new zqCurrentUser(session);
}

ComPtr<IDispatch> MakeAppointmentItem(StandInSession& session) {
  return new zqAppointmentItem(session);
}

}  // namespace velkor
