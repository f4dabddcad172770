// tools/XmlAnswer.cpp: the exported file of a case.
#include "tools/XmlAnswer.h"

#include <string>
#include <utility>
#include <vector>

#include "exchange/XmlExport.h"
#include "platform/headless/HeadlessSeams.h"
#include "tools/GivenYears.h"
#include "tools/ProbeCase.h"

namespace velkor {
namespace {

using Json = nlohmann::ordered_json;

/// The events of a case belong to no year of their own.
constexpr int Year = 2000;

std::vector<CalEvent> EventsWithCatIndex(const Json& json, const GivenYears& source) {
  const bool hide = json.at("hideNonCategory").get<bool>();
  std::vector<CalEvent> events = EventsOf(json.at("events"));
  for (CalEvent& event : events) {
    event.CatIndex =
        source.categories.CatIndexOf(event.Categories, source.filter.FilterSeparator(), hide);
  }
  return events;
}

}  // namespace

Json AnswerXml(const Json& json) {
  constexpr const char* FileName = "export.xml";
  GivenYears source;
  source.categories = TableOf(json.at("categories"));
  const Json& filter = json.at("filter");
  source.filter = FilterOf(json.at("separator"), filter.at("text").get<std::string>(),
                           filter.at("matchAll").get<bool>());
  source.years[Year] = EventCollection(EventsWithCatIndex(json, source));
  for (const auto& [id, item] : ObjectOf(json.at("items")).items()) {
    source.AddItem(id, item.at("body").get<std::string>(), item.at("location").get<std::string>());
  }
  const ExportChoice choice{.firstYear = Year,
                            .lastYear = Year,
                            .categoriesOnly = json.at("categoriesOnly").get<bool>(),
                            .host = json.at("host").get<std::string>()};
  HeadlessSeams seams;
  seams.messages.Expect("Velkor Data saved");
  XmlExport(source, seams.On(source.Outlook())).Write(FileName, choice);
  return TextOfBytes(seams.files.contents.at(FileName));
}

}  // namespace velkor
