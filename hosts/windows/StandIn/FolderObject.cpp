// hosts/windows/StandIn/FolderObject.cpp: the members of folders.
#include "hosts/windows/StandIn/FolderObject.h"

#include "hosts/windows/StandIn/ItemsObject.h"
#include "hosts/windows/StandIn/VariantEnum.h"
#include "support/values/Text.h"

namespace velkor {

struct FolderObject::Tables {
  using Self = FolderObject;
  static constexpr Member Members[] = {
      {"Name", Bound<&Self::Name>},       {"EntryID", Bound<&Self::EntryID>},
      {"StoreID", Bound<&Self::StoreID>}, {"DefaultItemType", Bound<&Self::DefaultItemType>},
      {"Folders", Bound<&Self::Folders>}, {"Items", Bound<&Self::Items>},
  };
  static constexpr ObjectClass Folder = {"MAPIFolder", 400, Members};
};

FolderObject::FolderObject(StandInSession& session, CalendarFolder& folder)
    : ServedObject(session, Tables::Folder), folder_(folder) {}

Variant FolderObject::Folders(const Call&) {
  return Variant(new FoldersObject(Shared(), &folder_));
}

Variant FolderObject::Items(const Call&) {
  const auto folder = Shared().space->GetFolderFromID(folder_.EntryID(), Shared().store.StoreID());
  return Variant(new ItemsObject(Shared(), folder->Items()));
}

struct FoldersObject::Tables {
  using Self = FoldersObject;
  static constexpr Member Members[] = {
      {"Count", Bound<&Self::Count>},
      {"Item", Bound<&Self::Item>},
      {"_NewEnum", Bound<&Self::NewEnum>},
      {"Add", Bound<&Self::Add>},
  };
  static constexpr ObjectClass Folders = {"Folders", 300, Members};
};

FoldersObject::FoldersObject(StandInSession& session, CalendarFolder* parent)
    : ServedObject(session, Tables::Folders), parent_(parent) {}

const std::vector<std::unique_ptr<CalendarFolder>>& FoldersObject::Folders() const {
  return parent_ != nullptr ? parent_->Folders() : Shared().store.Folders();
}

Variant FoldersObject::Count(const Call&) {
  return Variant(static_cast<std::int32_t>(Folders().size()));
}

Variant FoldersObject::Item(const Call& call) {
  const Variant key = call[0];
  const bool isName = key.Get().vt == VT_BSTR;
  const std::string name = isName ? key.ToText() : std::string();
  const std::int32_t index = isName ? 0 : key.ToInt();
  std::int32_t place = 0;
  for (const auto& folder : Folders()) {
    if (isName ? CompareText(folder->Name(), name) == 0 : ++place == index) {
      return Variant(new FolderObject(Shared(), *folder));
    }
  }
  FailNotFound();
}

Variant FoldersObject::NewEnum(const Call&) {
  std::vector<ComPtr<IDispatch>> objects;
  for (const auto& folder : Folders()) objects.emplace_back(new FolderObject(Shared(), *folder));
  return Enumerate(std::move(objects));
}

Variant FoldersObject::Add(const Call& call) {
  const std::string name = call[0].ToText();
  const bool holdsMail = call.Has(1) && call[1].ToInt() != outlook::FolderCalendar;
  const int type = holdsMail ? outlook::ItemTypeMail : outlook::ItemTypeAppointment;
  const std::string id = (parent_ != nullptr ? parent_->EntryID() : std::string("F")) + "-F" +
                         std::to_string(Folders().size() + 1);
  CalendarFolder& added = parent_ != nullptr ? parent_->AddFolder(name, id, type)
                                             : Shared().store.AddFolder(name, id, type);
  return Variant(new FolderObject(Shared(), added));
}

}  // namespace velkor
