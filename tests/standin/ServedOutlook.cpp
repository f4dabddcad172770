// tests/standin/ServedOutlook.cpp: the members of the application, folders, items and helpers.
#include "tests/standin/ServedOutlook.h"

namespace velkor {
namespace {

/// Events of item collections (ItemsEvents).
constexpr IID ItemsEvents = {0x00063077, 0, 0, {0xc0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr DISPID ItemAddEvent = 0xF001;
constexpr DISPID ItemChangeEvent = 0xF002;
constexpr DISPID ItemRemoveEvent = 0xF003;

/// By which Outlook says that there is no such object (MAPI_E_NOT_FOUND).
[[noreturn]] void FailNotFound() {
  throw Error(static_cast<long>(0x8004010F), "The operation failed. An object could not be found.");
}

/// What is set as the type that the item's own function takes.
void Put(OutlookItem& item, void (OutlookItem::*set)(std::string_view), const Variant& value) {
  (item.*set)(value.ToText());
}
void Put(OutlookItem& item, void (OutlookItem::*set)(Date), const Variant& value) {
  (item.*set)(value.ToDate());
}
void Put(OutlookItem& item, void (OutlookItem::*set)(bool), const Variant& value) {
  (item.*set)(value.ToBool());
}

/// Items and those who listen to them: an item that is told is looked up, as its listener keeps it.
struct HeardItems : OutlookItemEvents {
  std::unique_ptr<OutlookItems> items;
  std::function<Variant(const std::string& entryId)> find;
  ComPtr<ConnectionPoint> events;

  HeardItems() = default;
  ~HeardItems() override {
    items->Connect(nullptr);
    events->Detach();
  }
  HeardItems(const HeardItems&) = delete;
  HeardItems& operator=(const HeardItems&) = delete;

  void ItemAdd(OutlookItem& item) override { Fire(ItemAddEvent, item); }
  void ItemChange(OutlookItem& item) override { Fire(ItemChangeEvent, item); }
  void ItemRemove() override { ComPtr<ConnectionPoint>(events)->Fire(ItemRemoveEvent, {}); }
  void Fire(DISPID event, OutlookItem& item) const {
    // A listener may let this go.
    const ComPtr<ConnectionPoint> kept = events;
    const Variant argument = find(item.EntryID());
    kept->Fire(event, {argument.Get()});
  }
};

}  // namespace

Variant ServedOutlook::Give(const ComPtr<ServedObject>& object) const {
  if (onGive) onGive(*object.Get());
  return Variant(static_cast<IDispatch*>(object.Get()));
}

ComPtr<ServedObject> ServedOutlook::Application() {
  auto application = Make("Application");
  application->members = {
      {"Version", [this](const ServedCall&) { return Variant(outlook_.Version()); }},
      {"GetNamespace", [this](const ServedCall& call) {
         // Refuses all but "MAPI".
         outlook_.GetNamespace(call[0].ToText());
         return Give(Namespace());
       }}};
  return application;
}

ComPtr<ServedObject> ServedOutlook::CurrentUser() {
  auto user = Make("zqCurrentUser");
  user->Has("Name", outlook_.CurrentUserName());
  user->members["Cleanup"] = [](const ServedCall&) { return Variant(); };
  return user;
}

ComPtr<ServedObject> ServedOutlook::AppointmentItem() {
  auto helper = Make("zqAppointmentItem");
  const auto item = std::make_shared<ComPtr<IDispatch>>();
  helper->members = {{"item",
                      [item](const ServedCall& call) {
                        *item = call[0].ToObject();
                        return Variant();
                      }},
                     {"Body", [item](const ServedCall& call) {
                        // Clients have been given no other objects than these.
                        auto& served = static_cast<ServedObject&>(*item->Get());
                        return served.members.at("Body")(call);
                      }}};
  return helper;
}

template <typename Parent>
ComPtr<ServedObject> ServedOutlook::Folders(std::shared_ptr<Parent> parent) {
  auto folders = Make("Folders");
  folders->members["Item"] = [this, parent](const ServedCall& call) {
    auto folder = parent->Folder(call[0].ToText());
    if (!folder) FailNotFound();
    return Give(Folder(std::move(folder)));
  };
  return folders;
}

ComPtr<ServedObject> ServedOutlook::Namespace() {
  auto session = Make("NameSpace");
  session->members = {
      {"Folders", [this](const ServedCall&) { return Give(Folders(space_)); }},
      {"GetDefaultFolder",
       [this](const ServedCall& call) {
         return Give(Folder(space_->GetDefaultFolder(call[0].ToInt())));
       }},
      {"GetFolderFromID",
       [this](const ServedCall& call) {
         return Give(Folder(space_->GetFolderFromID(call[0].ToText(), call[1].ToText())));
       }},
      {"GetItemFromID",
       [this](const ServedCall& call) {
         return Item(space_->GetItemFromID(call[0].ToText(), call[1].ToText()));
       }},
      {"CurrentUser", [this](const ServedCall&) {
         auto user = Make("Recipient");
         user->Has("Name", outlook_.CurrentUserName());
         return Give(user);
       }}};
  return session;
}

ComPtr<ServedObject> ServedOutlook::Folder(std::shared_ptr<OutlookFolder> folder) {
  auto object = Make("MAPIFolder");
  object->Has("Name", folder->Name());
  object->Has("EntryID", folder->EntryID());
  object->Has("StoreID", folder->StoreID());
  object->Has("DefaultItemType", folder->DefaultItemType());
  object->members["Folders"] = [this, folder](const ServedCall&) { return Give(Folders(folder)); };
  object->members["Items"] = [this, folder](const ServedCall&) {
    return Give(Items(folder->Items(), folder->StoreID()));
  };
  return object;
}

ComPtr<ServedObject> ServedOutlook::Items(std::unique_ptr<OutlookItems> made,
                                          const std::string& storeId) {
  auto object = Make("Items");
  const auto heard = std::make_shared<HeardItems>();
  OutlookItems* const items = made.get();
  heard->items = std::move(made);
  heard->events = object->events =
      ComPtr<ConnectionPoint>(new ConnectionPoint(*object.Get(), ItemsEvents));
  heard->find = [this, storeId](const std::string& id) {
    return Item(space_->GetItemFromID(id, storeId));
  };
  object->onListener = [heard = heard.get()] { heard->items->Connect(heard); };
  object->held.push_back(heard);
  object->members = {
      {"Restrict",
       [this, items, storeId](const ServedCall& call) {
         return Give(Items(items->Restrict(call[0].ToText()), storeId));
       }},
      {"Sort",
       [items](const ServedCall& call) {
         items->Sort(call[0].ToText());
         return Variant();
       }},
      {"IncludeRecurrences",
       [items](const ServedCall& call) {
         items->IncludeRecurrences(call[0].ToBool());
         return Variant();
       }},
      {"GetFirst", [this, items](const ServedCall&) { return Item(items->GetFirst()); }},
      {"GetNext", [this, items](const ServedCall&) { return Item(items->GetNext()); }},
      {"Find",
       [this, items](const ServedCall& call) { return Item(items->Find(call[0].ToText())); }},
      {"FindNext", [this, items](const ServedCall&) { return Item(items->FindNext()); }},
      {"Add", [this, items](const ServedCall& call) {
         return Item(items->Add(call.Has(0) ? call[0].ToText() : std::string()));
       }}};
  return object;
}

Variant ServedOutlook::Item(std::unique_ptr<OutlookItem> made) {
  using Item = OutlookItem;
  if (!made) return Nothing();
  const std::shared_ptr<Item> item = std::move(made);
  const bool isMeeting = outlook::IsMeetingClass(item->Class());
  const auto object = Make(isMeeting ? "MeetingItem" : "AppointmentItem");
  const auto reads = [&](const char* member, auto get) {
    object->members[member] = [item, get](const ServedCall&) {
      return Variant((item.get()->*get)());
    };
  };
  const auto property = [&](const char* member, auto get, auto set) {
    object->members[member] = [item, get, set](const ServedCall& call) {
      if (!call.IsPut()) return Variant((item.get()->*get)());
      Put(*item, set, call[0]);
      return Variant();
    };
  };
  const auto does = [&](const char* member, const std::function<void(Item&, const Call&)>& work) {
    object->members[member] = [item, work](const ServedCall& call) {
      work(*item, call);
      return Variant();
    };
  };
  reads("Class", &Item::Class);
  reads("EntryID", &Item::EntryID);
  reads("MessageClass", &Item::MessageClass);
  reads("LastModificationTime", &Item::LastModificationTime);
  reads("IsRecurring", &Item::IsRecurring);
  property("Subject", &Item::Subject, &Item::SetSubject);
  property("Categories", &Item::Categories, &Item::SetCategories);
  property("Body", &Item::Body, &Item::SetBody);
  property("Location", &Item::Location, &Item::SetLocation);
  property("Start", &Item::Start, &Item::SetStart);
  property("End", &Item::End, &Item::SetEnd);
  property("AllDayEvent", &Item::AllDayEvent, &Item::SetAllDayEvent);
  does("ReminderSet", [](Item& set, const Call& call) { set.SetReminderSet(call[0].ToBool()); });
  does("Save", [](Item& saved, const Call&) { saved.Save(); });
  does("Delete", [](Item& deleted, const Call&) { deleted.Delete(); });
  does("Display", [](Item& shown, const Call& call) { shown.Display(call.IsTrue(0)); });
  object->members["GetAssociatedAppointment"] = [this, item](const ServedCall& call) {
    return this->Item(item->GetAssociatedAppointment(call.IsTrue(0)));
  };
  return Give(object);
}

}  // namespace velkor
