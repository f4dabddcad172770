// tests/standin/ItemsObject.cpp: the members of item collections, and who hears of items.
#include "tests/standin/ItemsObject.h"

#include "tests/standin/ItemObject.h"
#include "tests/standin/VariantEnum.h"
#include "values/Error.h"
#include "values/Text.h"

namespace velkor {
namespace {

/// Events of item collections (ItemsEvents).
constexpr IID ItemsEvents = {0x00063077, 0, 0, {0xc0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr DISPID ItemAddEvent = 0xF001;
constexpr DISPID ItemChangeEvent = 0xF002;
constexpr DISPID ItemRemoveEvent = 0xF003;

}  // namespace

struct ItemsObject::Tables {
  using Self = ItemsObject;
  static constexpr Member Members[] = {
      {"Count", Bound<&Self::Count>},
      {"Item", Bound<&Self::Item>},
      {"_NewEnum", Bound<&Self::NewEnum>},
      {"Restrict", Bound<&Self::Restrict>},
      {"Sort", Bound<&Self::Sort>},
      {"IncludeRecurrences", Bound<&Self::IncludeRecurrences>, true},
      {"GetFirst", Bound<&Self::GetFirst>},
      {"GetNext", Bound<&Self::GetNext>},
      {"Find", Bound<&Self::Find>},
      {"FindNext", Bound<&Self::FindNext>},
      {"Add", Bound<&Self::Add>},
  };
  static constexpr WatchedClass Items = {{"Items", 500, Members}};
};

ItemsObject::ItemsObject(StandInSession& session, std::unique_ptr<OutlookItems> items,
                         bool includeRecurrences)
    : ServedObject(session, Tables::Items),
      items_(std::move(items)),
      includeRecurrences_(includeRecurrences),
      events_(new ConnectionPoint(*this, ItemsEvents)) {}

ItemsObject::~ItemsObject() {
  items_->Connect(nullptr);
  events_->Detach();
}

std::vector<std::unique_ptr<OutlookItem>> ItemsObject::All() {
  // A collection of its own, since this one's cursor stays where it is.
  const auto all = items_->Restrict("[Subject] >= ''");
  std::vector<std::unique_ptr<OutlookItem>> list;
  for (auto item = all->GetFirst(); item; item = all->GetNext()) list.push_back(std::move(item));
  return list;
}

Variant ItemsObject::Count(const Call&) {
  return Variant(static_cast<std::int32_t>(All().size()));
}

Variant ItemsObject::Item(const Call& call) {
  const Variant key = call[0];
  auto all = All();
  if (key.Get().vt == VT_BSTR) {
    for (auto& item : all) {
      if (CompareText(item->Subject(), key.ToText()) == 0) {
        return ToObject(Shared(), std::move(item));
      }
    }
    FailNotFound();
  }
  const std::int32_t index = key.ToInt();
  if (index < 1 || static_cast<std::size_t>(index) > all.size()) FailNotFound();
  return ToObject(Shared(), std::move(all[static_cast<std::size_t>(index - 1)]));
}

Variant ItemsObject::NewEnum(const Call&) {
  std::vector<ComPtr<IDispatch>> objects;
  for (auto& item : All()) objects.emplace_back(new ItemObject(Shared(), std::move(item)));
  return Enumerate(std::move(objects));
}

Variant ItemsObject::Restrict(const Call& call) {
  return Variant(
      new ItemsObject(Shared(), items_->Restrict(call[0].ToText()), includeRecurrences_));
}

Variant ItemsObject::Sort(const Call& call) {
  if (call.IsTrue(1)) throw Error(errors::CalendarFailed, "Items are sorted ascending only.");
  items_->Sort(call[0].ToText());
  return {};
}

Variant ItemsObject::IncludeRecurrences(const Call& call) {
  if (!call.IsPut()) return Variant(includeRecurrences_);
  includeRecurrences_ = call[0].ToBool();
  items_->IncludeRecurrences(includeRecurrences_);
  return {};
}

Variant ItemsObject::GetFirst(const Call&) {
  return ToObject(Shared(), items_->GetFirst());
}

Variant ItemsObject::GetNext(const Call&) {
  return ToObject(Shared(), items_->GetNext());
}

Variant ItemsObject::Find(const Call& call) {
  return ToObject(Shared(), items_->Find(call[0].ToText()));
}

Variant ItemsObject::FindNext(const Call&) {
  return ToObject(Shared(), items_->FindNext());
}

Variant ItemsObject::Add(const Call& call) {
  const bool isClass = call.Has(0) && call[0].Get().vt == VT_BSTR;
  if (call.Has(0) && !isClass && call[0].ToInt() != outlook::ItemTypeAppointment) {
    throw Error(errors::InvalidProcedureCall, "Only appointments can be added here.");
  }
  return ToObject(Shared(), items_->Add(isClass ? call[0].ToText() : std::string()));
}

STDMETHODIMP ItemsObject::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
  const HRESULT result = velkor::FindConnectionPoint({events_.Get()}, id, point);
  if (SUCCEEDED(result)) items_->Connect(this);
  return result;
}

void ItemsObject::ItemAdd(OutlookItem& item) {
  Fire(ItemAddEvent, item);
}

void ItemsObject::ItemChange(OutlookItem& item) {
  Fire(ItemChangeEvent, item);
}

void ItemsObject::ItemRemove() {
  const ComPtr<ConnectionPoint> events = events_;
  events->Fire(ItemRemoveEvent, {});
}

void ItemsObject::Fire(DISPID event, OutlookItem& item) {
  // A listener may let this object go.
  const ComPtr<ConnectionPoint> events = events_;
  const Variant argument =
      ToObject(Shared(), Shared().space->GetItemFromID(item.EntryID(), Shared().store.StoreID()));
  events->Fire(event, {argument.Get()});
}

}  // namespace velkor
