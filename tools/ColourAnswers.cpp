// tools/ColourAnswers.cpp: what the colour store reads from and writes to a calendar's records.
#include "tools/ColourAnswers.h"

#include <string>
#include <string_view>

#include "categories/ColourList.h"
#include "model/ColourRecord.h"
#include "tools/ColourCalendar.h"
#include "tools/ProbeCase.h"
#include "values/Error.h"

namespace velkor {
namespace {

using Json = nlohmann::ordered_json;

/// Throws Error when the store told of one.
void Check(const ColourCalendar& calendar) {
  if (!calendar.messages.told.empty()) {
    throw Error(errors::CalendarFailed, calendar.messages.told.front());
  }
}

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
    calendar.Add(colour_record::SubjectOf(ColourCalendar::Title), current.get<std::string>());
  }
  if (!legacy.is_null()) {
    calendar.Add(std::string(colour_record::LegacySubject), legacy.get<std::string>());
  }

  const FetchedColours fetched = calendar.Colours().Fetch(ColourCalendar::Title);
  if (fetched.fault) throw Error(*fetched.fault);
  calendar.Colours().Save(ColourCalendar::Title, fetched.categories);
  Check(calendar);

  Json answer{{"done", Json::array()}, {"categories", Json::array()}};
  for (const ColourRecordChange change : fetched.done) answer["done"].push_back(WordFor(change));
  for (const Category& category : fetched.categories) {
    answer["categories"].push_back({{"name", category.name}, {"colour", category.colour.value}});
  }
  answer["body"] = calendar.BodyOf(ColourCalendar::Title);
  return answer;
}

Json AnswerAllLists(const Json& json) {
  ColourCalendar calendar;
  for (const Json& record : ListOf(json.at("records"))) {
    calendar.Add(record.at(0).get<std::string>(), record.at(1).get<std::string>());
  }
  Json names = CategoryNamesOf(calendar.Colours().CollectAllLists());
  Check(calendar);
  return names;
}

}  // namespace velkor
