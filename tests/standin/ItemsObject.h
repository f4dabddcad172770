// tests/standin/ItemsObject.h: the items of a folder by their names, and their events; part
// of the calendar program for tests, never shipped.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "platform/windows/com/ConnectionPoint.h"
#include "tests/standin/ServedObject.h"

namespace velkor {

/// Connects sinks of the items' events, which are raised for as long as a client holds the object.
class ItemsObject : public ServedObject<IConnectionPointContainer>, private OutlookItemEvents {
 public:
  ItemsObject(StandInSession& session, std::unique_ptr<OutlookItems> items,
              bool includeRecurrences = false);
  ~ItemsObject() override;

  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override {
    return EnumerateConnectionPoints({events_.Get()}, points);
  }
  STDMETHODIMP FindConnectionPoint(REFIID id, IConnectionPoint** point) override;

 private:
  struct Tables;

  Variant Count(const Call& call);
  Variant Item(const Call& call);
  Variant NewEnum(const Call& call);
  Variant Restrict(const Call& call);
  Variant Sort(const Call& call);
  Variant IncludeRecurrences(const Call& call);
  Variant GetFirst(const Call& call);
  Variant GetNext(const Call& call);
  Variant Find(const Call& call);
  Variant FindNext(const Call& call);
  Variant Add(const Call& call);

  std::vector<std::unique_ptr<OutlookItem>> All();
  void ItemAdd(OutlookItem& item) override;
  void ItemChange(OutlookItem& item) override;
  void ItemRemove() override;
  void Fire(DISPID event, OutlookItem& item);

  std::unique_ptr<OutlookItems> items_;
  bool includeRecurrences_;
  ComPtr<ConnectionPoint> events_;
};

}  // namespace velkor
