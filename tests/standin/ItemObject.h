// tests/standin/ItemObject.h: an appointment or a meeting item by its names; part of the
// calendar program for tests, never shipped.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "tests/standin/ServedObject.h"

namespace velkor {

/// Identifies an object as one of ours: what is asked for by it is the ItemObject itself.
inline constexpr GUID OwnItemId = {
    0x3f0c9d52, 0x7f1e, 0x4b0b, {0x9a, 0x41, 0x5a, 0x1d, 0x86, 0x0e, 0x2b, 0x71}};

class ItemObject : public ServedObject<> {
 public:
  ItemObject(StandInSession& session, std::unique_ptr<OutlookItem> item);

  OutlookItem& Item() { return *item_; }
  std::string HtmlBody();

 protected:
  void* FindOther(REFIID id) override {
    return id == OwnItemId ? static_cast<IDispatch*>(this) : nullptr;
  }

 private:
  struct Tables;

  template <auto Get>
  Variant Read(const Call&) {
    return Variant((item_.get()->*Get)());
  }
  template <auto Get, auto Set>
  Variant Property(const Call& call);
  Variant GetHtmlBody(const Call&) { return Variant(HtmlBody()); }
  Variant ReminderSet(const Call& call);
  Variant Save(const Call& call);
  Variant Delete(const Call& call);
  Variant Display(const Call& call);
  Variant GetAssociatedAppointment(const Call& call);

  std::unique_ptr<OutlookItem> item_;
  std::optional<bool> reminder_;
};

/// An item as an object; null stands for none.
Variant ToObject(StandInSession& session, std::unique_ptr<OutlookItem> item);

}  // namespace velkor
