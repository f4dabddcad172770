// tests/standin/FolderObject.cpp: the members of folders.
#include "tests/standin/FolderObject.h"

#include "tests/standin/ItemsObject.h"
#include "tests/standin/VariantEnum.h"
#include "values/Text.h"

namespace velkor {
namespace {

class FolderObject : public ServedObject<> {
 public:
  FolderObject(StandInSession& session, CalendarFolder& folder)
      : ServedObject(session, Kind()), folder_(folder) {}

 private:
  static const WatchedClass& Kind();

  Variant Name(const Call&) { return Variant(folder_.Name()); }
  Variant EntryID(const Call&) { return Variant(folder_.EntryID()); }
  Variant StoreID(const Call&) { return Variant(Shared().store.StoreID()); }
  Variant DefaultItemType(const Call&) { return Variant(std::int32_t{folder_.ItemType()}); }
  Variant Folders(const Call& call) { return FoldersAnswer(Shared(), &folder_, call); }
  Variant Items(const Call&) {
    const auto folder =
        Shared().space->GetFolderFromID(folder_.EntryID(), Shared().store.StoreID());
    return Variant(new ItemsObject(Shared(), folder->Items()));
  }

  CalendarFolder& folder_;
};

const WatchedClass& FolderObject::Kind() {
  static constexpr Member Members[] = {
      {"Name", Bound<&FolderObject::Name>},
      {"EntryID", Bound<&FolderObject::EntryID>},
      {"StoreID", Bound<&FolderObject::StoreID>},
      {"DefaultItemType", Bound<&FolderObject::DefaultItemType>},
      {"Folders", Bound<&FolderObject::Folders>},
      {"Items", Bound<&FolderObject::Items>},
  };
  static constexpr WatchedClass Folder = {{"MAPIFolder", 400, Members}};
  return Folder;
}

class FoldersObject : public ServedObject<> {
 public:
  FoldersObject(StandInSession& session, CalendarFolder* parent)
      : ServedObject(session, Kind()), parent_(parent) {}

  /// By name or by number from 1.
  Variant Item(const Call& call) {
    const Variant key = call[0];
    const bool isName = key.Get().vt == VT_BSTR;
    const std::string name = isName ? key.ToText() : std::string();
    const std::int32_t index = isName ? 0 : key.ToInt();
    std::int32_t place = 0;
    for (const auto& folder : Folders()) {
      if (isName ? CompareText(folder->Name(), name) == 0 : ++place == index) {
        return FolderAnswer(Shared(), *folder);
      }
    }
    FailNotFound();
  }

 private:
  static const WatchedClass& Kind();

  const std::vector<std::unique_ptr<CalendarFolder>>& Folders() const {
    return parent_ != nullptr ? parent_->Folders() : Shared().store.Folders();
  }
  Variant Count(const Call&) { return Variant(static_cast<std::int32_t>(Folders().size())); }
  Variant NewEnum(const Call&) {
    std::vector<ComPtr<IDispatch>> objects;
    for (const auto& folder : Folders()) objects.emplace_back(new FolderObject(Shared(), *folder));
    return Enumerate(std::move(objects));
  }
  /// Name, and a kind of default folder (OlDefaultFolders) that says what the folder holds.
  Variant Add(const Call& call) {
    const std::string name = call[0].ToText();
    const bool holdsMail = call.Has(1) && call[1].ToInt() != outlook::FolderCalendar;
    const int type = holdsMail ? outlook::ItemTypeMail : outlook::ItemTypeAppointment;
    const std::string id = (parent_ != nullptr ? parent_->EntryID() : std::string("F")) + "-F" +
                           std::to_string(Folders().size() + 1);
    return FolderAnswer(Shared(), parent_ != nullptr ? parent_->AddFolder(name, id, type)
                                                     : Shared().store.AddFolder(name, id, type));
  }

  CalendarFolder* parent_;
};

const WatchedClass& FoldersObject::Kind() {
  static constexpr Member Members[] = {
      {"Count", Bound<&FoldersObject::Count>},
      {"Item", Bound<&FoldersObject::Item>},
      {"_NewEnum", Bound<&FoldersObject::NewEnum>},
      {"Add", Bound<&FoldersObject::Add>},
  };
  static constexpr WatchedClass Folders = {{"Folders", 300, Members}};
  return Folders;
}

}  // namespace

Variant FolderAnswer(StandInSession& session, CalendarFolder& folder) {
  return Variant(new FolderObject(session, folder));
}

Variant FoldersAnswer(StandInSession& session, CalendarFolder* parent, const Call& call) {
  const ComPtr<FoldersObject> folders(new FoldersObject(session, parent));
  return call.Has(0) ? folders->Item(call) : Variant(folders.Get());
}

}  // namespace velkor
