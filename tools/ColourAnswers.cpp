// tools/ColourAnswers.cpp: what the colour store reads from and writes to a calendar's records.
#include "tools/ColourAnswers.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "calendar/EmbeddedOutlook.h"
#include "categories/ColourList.h"
#include "categories/ColourRecords.h"
#include "categories/ColourStore.h"
#include "model/ColourRecord.h"
#include "platform/MessageBoxes.h"
#include "platform/headless/FixedLocale.h"
#include "support/values/Error.h"

namespace velkor {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view Title = "Default";

/// Keeps what it is told; nobody sees it.
class KeptMessages : public MessageBoxes {
 public:
  MessageAnswer Show(const Message& message) override {
    told += message.text;
    return MessageAnswer::Ok;
  }

  std::string told;
};

/// A calendar in memory with a colour store over it.
class ColourCalendar {
 public:
  void Add(const std::string& subject, const std::string& body) {
    CalendarItem item;
    item.entryId = "record " + std::to_string(folder_.AllItems().size());
    item.fields.subject = subject;
    item.fields.body = body;
    item.start = item.end = colour_record::HiddenInstant();
    folder_.Add(std::move(item));
  }

  ColourStore& Colours() { return colours_; }

  /// Throws Error when the store told of one.
  void Check() const {
    if (!messages_.told.empty()) throw Error(errors::CalendarFailed, messages_.told);
  }

  std::string BodyOf(std::string_view title) {
    const auto folder = OpenFolder();
    const auto item = ColourRecords(*folder, locale_).FindItem(colour_record::SubjectOf(title));
    return item ? item->Body() : std::string();
  }

 private:
  std::unique_ptr<OutlookFolder> OpenFolder() {
    return outlook_.GetNamespace("MAPI")->GetFolderFromID(folder_.EntryID(), store_.StoreID());
  }

  FixedLocale locale_;
  KeptMessages messages_;
  CalendarStore store_{"store"};
  CalendarFolder& folder_ = store_.AddFolder("Calendar", "folder", outlook::ItemTypeAppointment);
  EmbeddedOutlook outlook_{store_, locale_, {.userName = "probe"}};
  ColourStore colours_{[this] { return OpenFolder(); }, locale_, messages_};
};

std::string_view WordFor(ColourRecordChange change) {
  switch (change) {
    case ColourRecordChange::Created:
      return "create";
    case ColourRecordChange::Migrated:
      return "migrate";
    case ColourRecordChange::Deleted:
      return "delete";
  }
  return {};
}

}  // namespace

Json AnswerColours(const Json& json) {
  ColourCalendar calendar;
  const Json& current = json.at("current");
  const Json& legacy = json.at("legacy");
  if (!current.is_null()) {
    calendar.Add(colour_record::SubjectOf(Title), current.get<std::string>());
  }
  if (!legacy.is_null()) {
    calendar.Add(std::string(colour_record::LegacySubject), legacy.get<std::string>());
  }

  const FetchedColours fetched = calendar.Colours().Fetch(Title);
  if (fetched.fault) throw Error(*fetched.fault);
  calendar.Colours().Save(Title, fetched.categories);
  calendar.Check();

  Json answer{{"done", Json::array()}, {"categories", Json::array()}};
  for (const ColourRecordChange change : fetched.done) answer["done"].push_back(WordFor(change));
  for (const Category& category : fetched.categories) {
    answer["categories"].push_back({{"name", category.name}, {"colour", category.colour.value}});
  }
  answer["body"] = calendar.BodyOf(Title);
  return answer;
}

Json AnswerAllLists(const Json& json) {
  ColourCalendar calendar;
  for (const Json& record : json.at("records")) {
    calendar.Add(record.at(0).get<std::string>(), record.at(1).get<std::string>());
  }
  Json names = CategoryNamesOf(calendar.Colours().CollectAllLists());
  calendar.Check();
  return names;
}

}  // namespace velkor
