// calendar/set/SetCalendar.cpp: which states of the calendars are in memory, and the folder made of
// them.
#include "calendar/set/SetCalendar.h"

#include <QFileInfo>
#include <algorithm>
#include <set>
#include <utility>

#include "calendar/ics/IcsFileWriter.h"
#include "calendar/ics/file/ShortHash.h"
#include "calendar/set/LocalPlaces.h"

namespace velkor {
namespace {

std::string NameOf(const std::string& calendar) {
  return QFileInfo(QString::fromStdString(calendar)).completeBaseName().toStdString();
}

/// Of the file of an address's copy, without its extension.
constexpr std::string_view CopyName = "calendar";

/// The only source of a planner without a set.
CalendarSet SetOfFile(const std::string& path) {
  CalendarSet set;
  set.path = path;
  set.sources.push_back({.location = path});
  return set;
}

PlaceMark MarkOfFile(const std::string& path) {
  return IcsFileWriter(path).Mark();
}

}  // namespace

std::string StoreIdOf(const std::string& calendar) {
  return QFileInfo(QString::fromStdString(calendar)).absoluteFilePath().toStdString();
}

std::string FolderIdOf(const std::string& calendar) {
  return ShortHash(StoreIdOf(calendar));
}

SetCalendar::SetCalendar(const std::string& calendar, const DateWindow& window,
                         SetCalendarOptions options)
    : options_(std::move(options)), store_(StoreIdOf(calendar)) {
  const PlaceMark mark = MarkOfFile(Path());
  TakeSet(IsSet() ? LoadSet(Path()) : SetOfFile(Path()));
  setState_.Take(mark, {});
  CalendarFolder::Items items = ReadAll(window);
  folder_ = &store_.AddFolder(IsSet() ? NameOf(Path()) : places_[0].name, FolderIdOf(Path()),
                              outlook::ItemTypeAppointment);
  folder_->Replace(std::move(items), window);
  folder_->SetLoader([this](const DateWindow& wider) {
    std::vector<CalendarItem> read;
    for (const CalendarFolder::Item& item : ReadAll(wider)) read.push_back(*item);
    return read;
  });
  folder_->SetWriter(this);
  store_.SetDefaultCalendar(folder_);
  told_ = AllTrouble();
}

/// Makes the places of a set; those that were there already go on.
void SetCalendar::TakeSet(CalendarSet set) {
  const SetPlace* const recordsBefore = RecordPlace();
  const std::string recordsIn = recordsBefore != nullptr ? recordsBefore->source.id : "";
  std::vector<SetPlace> places;
  std::set<std::string> keys;
  for (const SetSource& source : set.sources) {
    SetPlace* const known = Find(source.id);
    SetPlace place;
    if (known != nullptr && PlaceKeyOf(known->source) == PlaceKeyOf(source)) {
      place = std::move(*known);
    } else {
      place.writer = MakePlaceWriter(source, options_.dataFolder, locks_);
    }
    // What is hidden is read anew when it is shown again, and so is what changes its part.
    const bool goesOn =
        place.source.shown == source.shown && place.source.background == source.background;
    if (!goesOn) {
      place.state.Forget();
      place.hasItems = false;
    }
    place.source = source;
    place.prefix = source.id;
    place.isTwice = !keys.insert(PlaceKeyOf(source)).second;
    places.push_back(std::move(place));
  }
  places_ = std::move(places);
  set_ = std::move(set);
  const SetPlace* const records = RecordPlace();
  if (records == nullptr || records->source.id == recordsIn) return;
  if (SetPlace* const before = Find(recordsIn)) before->state.Forget();
  Find(records->source.id)->state.Forget();
}

/// Takes the set's own file in when it changed.
/// @return whether it was
bool SetCalendar::FollowSet() {
  if (!IsSet()) return false;
  const PlaceMark mark = MarkOfFile(Path());
  if (!setState_.IsNews(mark)) return false;
  try {
    TakeSet(LoadSet(Path()));
    setState_.Take(mark, {});
    return true;
  } catch (const Error& error) {
    setState_.Take(mark, error);
    throw;
  }
}

bool SetCalendar::IsRecord(const CalendarItem& item) const {
  return options_.isRecord && options_.isRecord(item.fields.subject);
}

/// The calendar that keeps the colour records; null when there is no calendar at all.
const SetPlace* SetCalendar::RecordPlace() const {
  const auto first = [&](const auto& wanted) {
    const auto found = std::find_if(places_.begin(), places_.end(), wanted);
    return found == places_.end() ? nullptr : &*found;
  };
  const SetPlace* place = first([&](const SetPlace& one) {
    return one.source.id == set_.defaultSource && one.source.kind != SourceKind::Address &&
           !one.isTwice;
  });
  if (place == nullptr) {
    place = first([](const SetPlace& one) { return !one.source.background && !one.IsReadOnly(); });
  }
  return place != nullptr || places_.empty() ? place : &places_.front();
}

bool SetCalendar::HasRecords(const SetPlace& place) const {
  return !IsSet() || &place == RecordPlace();
}

bool SetCalendar::IsRead(const SetPlace& place) const {
  return !place.isTwice && (place.source.shown || HasRecords(place));
}

bool SetCalendar::Shows(const SetPlace& place, const CalendarItem& item) const {
  if (IsRecord(item)) return HasRecords(place);
  return place.source.shown && !place.source.background;
}

SetPlace* SetCalendar::Find(std::string_view sourceId) {
  const auto found = std::find_if(places_.begin(), places_.end(), [&](const SetPlace& place) {
    return place.source.id == sourceId;
  });
  return found == places_.end() ? nullptr : &*found;
}

const SetSource* SetCalendar::SourceOf(std::string_view entryId) const {
  for (const SetPlace& place : places_) {
    if (entryId.starts_with(place.prefix)) return &place.source;
  }
  return nullptr;
}

SetPlace& SetCalendar::PlaceOf(const std::string& entryId) {
  const SetSource* const source = SourceOf(entryId);
  if (source == nullptr) {
    throw Error(errors::CalendarFailed, "The appointment is in no calendar any more.", "Calendar");
  }
  return *Find(source->id);
}

std::string SetCalendar::OwnId(const SetPlace& place, const std::string& entryId) const {
  return entryId.substr(place.prefix.size());
}

std::vector<Diagnostic> SetCalendar::Diagnostics() const {
  std::vector<Diagnostic> all;
  for (const SetPlace& place : places_) {
    if (!IsRead(place)) continue;
    all.insert(all.end(), place.diagnostics.begin(), place.diagnostics.end());
  }
  return all;
}

std::vector<std::string> SetCalendar::Files() const {
  std::vector<std::string> files;
  if (IsSet()) files.push_back(Path());
  for (const SetPlace& place : places_) {
    files.push_back(LocalCalendarOf(place.source, options_.dataFolder));
  }
  return files;
}

/// The calendars that are to be read, in the states that they are in now: a change while one is
/// read is then found at the next look.
/// @param all  whether or not they are news
std::vector<SetCalendar::Asked> SetCalendar::AskFor(bool all) {
  std::vector<Asked> asked;
  for (SetPlace& place : places_) {
    if (!IsRead(place)) continue;
    const PlaceMark mark = place.writer->Mark();
    if (place.state.IsNews(mark) || all) {
      asked.push_back({place.source.id, mark, place.state.Now()});
    }
  }
  return asked;
}

std::unique_ptr<IcsReading> SetCalendar::Start(const std::vector<Asked>& asked,
                                               const DateWindow& window) {
  std::vector<std::string> ids;
  if (IsSet()) {
    for (const Asked& one : asked) ids.push_back(one.id);
  }
  return std::make_unique<IcsReading>(Path(), window, options_.worker, ids);
}

/// Takes what was read of a calendar.
/// @param fresh  gets its items by the source's identifier; none where those in memory stay
void SetCalendar::Adopt(SetPlace& place, const PlaceMark& mark, IcsOutcome outcome,
                        std::map<std::string, CalendarFolder::Items>& fresh) {
  ParsedCalendar& calendar = outcome.calendar;
  if (!outcome.error && !calendar.trouble.empty()) {
    outcome.error = Error(errors::CalendarFailed, calendar.trouble, "Calendar");
  }
  // What is in memory is no older than a copy.
  const bool keeps = outcome.error && (place.hasItems || calendar.trouble.empty());
  place.state.Take(mark, std::move(outcome.error));
  if (keeps) return;
  place.hasItems = true;
  place.name = std::move(calendar.name);
  // A copy without a name of its own has that of its file, which is ours.
  const bool isCopy = place.source.kind == SourceKind::Address;
  if (isCopy && place.name == CopyName) place.name.clear();
  place.diagnostics = std::move(calendar.diagnostics);
  CalendarFolder::Items& items = fresh[place.source.id];
  for (CalendarItem& item : calendar.items) {
    if (!Shows(place, item)) continue;
    item.entryId.insert(0, place.prefix);
    items.push_back(std::make_shared<const CalendarItem>(std::move(item)));
  }
  place.daysOff.clear();
  if (place.source.background) place.daysOff = std::move(calendar.items);
}

/// The folder's items: of each calendar the fresh ones, else those that the folder has.
CalendarFolder::Items SetCalendar::Together(
    std::map<std::string, CalendarFolder::Items> fresh) const {
  std::map<std::string_view, CalendarFolder::Items*> lists;
  for (const SetPlace& place : places_) {
    const auto [list, isNew] = fresh.try_emplace(place.source.id);
    if (isNew && IsRead(place)) lists.emplace(place.prefix, &list->second);
  }
  if (folder_ != nullptr && !lists.empty()) {
    for (const CalendarFolder::Item& item : folder_->AllItems()) {
      const std::string_view id = item->entryId;
      const auto list = lists.find(IsSet() ? id.substr(0, lists.begin()->first.size()) : "");
      if (list != lists.end()) list->second->push_back(item);
    }
  }
  CalendarFolder::Items all;
  for (const SetPlace& place : places_) {
    CalendarFolder::Items& items = fresh[place.source.id];
    std::move(items.begin(), items.end(), std::back_inserter(all));
  }
  return all;
}

/// @return whether one of the answers was still of use
bool SetCalendar::Take(const std::vector<Asked>& asked, std::vector<IcsOutcome> outcomes,
                       const DateWindow& window) {
  std::map<std::string, CalendarFolder::Items> fresh;
  bool isOfUse = false;
  for (std::size_t i = 0; i < asked.size(); ++i) {
    SetPlace* const place = Find(asked[i].id);
    if (place == nullptr || place->state.Now() != asked[i].known) continue;
    Adopt(*place, asked[i].mark, std::move(outcomes[i]), fresh);
    isOfUse = true;
  }
  if (isOfUse) folder_->Replace(Together(std::move(fresh)), window);
  return isOfUse;
}

/// All of them, whether or not they are news; those that cannot be read keep what they have.
CalendarFolder::Items SetCalendar::ReadAll(const DateWindow& window) {
  const std::vector<Asked> asked = AskFor(true);
  std::map<std::string, CalendarFolder::Items> fresh;
  if (!asked.empty()) {
    const auto reading = Start(asked, window);
    reading->Wait();
    std::vector<IcsOutcome> outcomes = reading->Results();
    if (!IsSet() && outcomes[0].error) throw Error(*outcomes[0].error);
    for (std::size_t i = 0; i < asked.size(); ++i) {
      Adopt(*Find(asked[i].id), asked[i].mark, std::move(outcomes[i]), fresh);
    }
  }
  return Together(std::move(fresh));
}

void SetCalendar::Read(const DateWindow& window) {
  folder_->Replace(ReadAll(window), window);
}

bool SetCalendar::CheckForChanges() {
  const bool isOther = FollowSet();
  const std::vector<Asked> asked = AskFor(false);
  const DateWindow window = *folder_->Loaded();
  if (asked.empty()) {
    if (isOther) folder_->Replace(Together({}), window);
    return isOther;
  }
  const auto reading = Start(asked, window);
  reading->Wait();
  Take(asked, reading->Results(), window);
  if (!IsSet() && places_[0].state.Fault()) throw Error(*places_[0].state.Fault());
  return true;
}

std::string SetCalendar::Trouble() const {
  const auto& fault = IsSet() ? setState_.Fault() : places_[0].state.Fault();
  return fault ? fault->Description() : "";
}

std::string SetCalendar::AllTrouble() const {
  std::string all = Trouble();
  for (const SetPlace& place : places_) {
    all += "\n";
    if (IsRead(place) && place.state.Fault()) all += place.state.Fault()->Description();
  }
  return all;
}

void SetCalendar::Look(const LookDone& onDone) {
  if (look_) return;
  bool isOther = false;
  try {
    isOther = FollowSet();
  } catch (const Error&) {
    // Told below.
  }
  std::vector<Asked> asked = AskFor(false);
  const DateWindow window = *folder_->Loaded();
  if (isOther) folder_->Replace(Together({}), window);
  if (asked.empty()) {
    const std::string before = std::exchange(told_, AllTrouble());
    if (told_ != before || isOther) onDone(Trouble());
    return;
  }
  auto reading = Start(asked, window);
  reading->WhenEnded([this] { EndLook(); });
  look_.emplace(StartedLook{std::move(reading), std::move(asked), window, onDone});
}

void SetCalendar::EndLook() {
  const StartedLook look = std::move(*look_);
  look_.reset();
  if (Take(look.asked, look.reading->Results(), look.window)) {
    told_ = AllTrouble();
    look.onDone(Trouble());
  }
  Look(look.onDone);
}

}  // namespace velkor
