// calendar/set/SetPlace.cpp: news, saves in between, and the writers of each kind of calendar.
#include "calendar/set/SetPlace.h"

#include <utility>

#include "calendar/ics/IcsFileWriter.h"
#include "calendar/set/LocalPlaces.h"
#include "calendar/set/MirrorPlace.h"

namespace velkor {
namespace {

/// The copy of an address: whoever fetches it writes it.
class CopyReader : public PlaceWriter {
 public:
  CopyReader(std::string path, std::string address)
      : file_(std::move(path)), address_(std::move(address)) {}

  PlaceMark Mark() const override { return file_.Mark(); }
  bool IsReadOnly() const override { return true; }
  const States& LastSave() const override { return file_.LastSave(); }
  CalendarItem WriteNew(const CalendarItem&, bool) override { Refuse(); }
  CalendarItem WriteChange(const CalendarItem&, const ItemChange&) override { Refuse(); }
  void WriteDeletion(const CalendarItem&) override { Refuse(); }
  void WriteCategory(std::string_view, std::string_view, Date) override { Refuse(); }
  std::shared_ptr<const void> Hold() override { return nullptr; }
  std::string WholeOf(const std::string& entryId) override { return file_.WholeOf(entryId); }
  CalendarItem TakeWhole(std::string_view, Date) override { Refuse(); }

 private:
  [[noreturn]] void Refuse() const {
    throw Error(errors::BadFileMode,
                "The calendar at " + address_ + " is for reading only; nothing was saved.",
                "Calendar");
  }

  IcsFileWriter file_;
  std::string address_;
};

}  // namespace

bool KnownState::IsNews(const PlaceMark& mark) {
  if (mark && mark == known_) {
    failed_.reset();
    fault_.reset();
    return false;
  }
  return !failed_ || *failed_ != mark;
}

void KnownState::Take(const PlaceMark& mark, std::optional<Error> fault) {
  Turn();
  fault_ = std::move(fault);
  if (fault_) {
    failed_ = mark;
  } else {
    known_ = mark;
    failed_.reset();
  }
}

void KnownState::NoteSave(const PlaceWriter::States& save, CalendarItem& item) {
  const bool isAlone = known_ && known_ == save.before;
  Turn();
  known_ = isAlone ? save.after : std::nullopt;
  if (!isAlone) item.contentMark.clear();
}

void KnownState::Forget() {
  Turn();
  known_.reset();
  failed_.reset();
}

std::unique_ptr<PlaceWriter> MakePlaceWriter(const SetSource& source, const std::string& dataFolder,
                                             const std::shared_ptr<FolderLocks>& locks) {
  const std::string path = LocalCalendarOf(source, dataFolder);
  switch (source.kind) {
    case SourceKind::Address:
      return std::make_unique<CopyReader>(path, source.location);
    case SourceKind::Server:
      return std::make_unique<MirrorPlace>(path,
                                           source.name.empty() ? source.location : source.name);
    case SourceKind::File:
      break;
  }
  CalendarFileOptions options;
  options.locks = locks;
  return std::make_unique<IcsFileWriter>(path, options);
}

}  // namespace velkor
