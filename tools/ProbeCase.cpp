// tools/ProbeCase.cpp: the parts of the probe's cases as the core's own types.
#include "tools/ProbeCase.h"

#include <optional>
#include <utility>

#include "values/IsoDate.h"
#include "values/Text.h"

namespace velkor {
namespace {

using Json = nlohmann::ordered_json;

}  // namespace

int WholeNumber(const Json& json, int least, int most) {
  // As a double every integer of the text keeps its size, if not its last digits.
  const bool inRange =
      json.is_number_integer() && json.get<double>() >= least && json.get<double>() <= most;
  if (!inRange) throw BadCase(json.dump() + " is no whole number that fits");
  return json.get<int>();
}

const Json& ListOf(const Json& json) {
  if (!json.is_array()) throw BadCase(json.dump() + " is no list");
  return json;
}

const Json& ObjectOf(const Json& json) {
  if (!json.is_object()) throw BadCase(json.dump() + " is no object");
  return json;
}

MemorySettings PrintSettingsOf(const Json& store) {
  MemorySettings settings;
  for (const auto& [key, value] : ObjectOf(store).items()) {
    settings.Save(stored_settings::Application, stored_settings::PrintingSection, key,
                  value.get<std::string>());
  }
  return settings;
}

Date DateOf(const Json& json) {
  const std::string text = json.get<std::string>();
  const std::optional<Date> date = ParseIso(text);
  if (!date) throw BadCase("\"" + text + "\" is no date");
  return *date;
}

DisplaySpan SpanOf(const Json& view) {
  const DisplaySpan span{WholeNumber(view.at("year"), 100, 9999),
                         WholeNumber(view.at("firstMonth"), 1, 12)};
  if (!IsValidSpan(span)) throw BadCase("the year ends after 9999");
  return span;
}

CategoryFilter FilterOf(const Json& separator, const std::string& text, bool matchAll) {
  CategoryFilter filter(CategorySeparator(separator.get<std::string>()));
  filter.SetCategoryFilter(text);
  filter.SetFilterMode(matchAll);
  return filter;
}

std::vector<CalEvent> EventsOf(const Json& json) {
  std::vector<CalEvent> events;
  for (const Json& entry : ListOf(json)) {
    CalEvent event;
    event.EventID = entry.at("id").get<std::string>();
    event.Subject = entry.at("subject").get<std::string>();
    event.Categories = entry.at("categories").get<std::string>();
    event.StartDate = DateOf(entry.at("start"));
    event.EndDate = DateOf(entry.at("end"));
    events.push_back(std::move(event));
  }
  return events;
}

CategoryTable TableOf(const Json& json) {
  std::vector<Category> categories;
  for (const Json& entry : ListOf(json)) {
    categories.push_back(
        {entry.at("name").get<std::string>(), Colour{WholeNumber(entry.at("colour"))}});
  }
  return CategoryTable(std::move(categories));
}

std::string TextOfBytes(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) AppendCharacter(text, static_cast<unsigned char>(c));
  return text;
}

YearGrid YearOf(const Json& json) {
  const Json& filter = json.at("filter");
  YearGrid grid(SpanOf(json.at("view")), TableOf(json.at("categories")),
                FilterOf(json.at("separator"), filter.at("text").get<std::string>(),
                         filter.at("matchAll").get<bool>()),
                {.AllEvents = json.at("allEvents").get<bool>(),
                 .HideNonCategoryItems = json.at("hideNonCategory").get<bool>()});
  std::vector<CalEvent> events = EventsOf(json.at("events"));
  const EventFields fields = grid.Fields();
  for (CalEvent& event : events) fields.Derive(event);
  grid.SetEvents(EventCollection(std::move(events)));
  return grid;
}

YearGrid GridOf(const Json& json) {
  YearGrid grid = YearOf(json);
  const Json& surface = json.at("surface");
  const PixelSize pixel{surface.at("pixelWidth").get<float>(),
                        surface.at("pixelHeight").get<float>()};
  if (!(pixel.width > 0) || !(pixel.height > 0)) throw BadCase("a pixel has no size");
  grid.Resize({surface.at("width").get<double>(), surface.at("height").get<double>()},
              surface.at("scrollWidth").get<double>(), pixel);
  return grid;
}

}  // namespace velkor
