// hosts/yearplan/commands/LayoutJson.cpp: a laid-out year as JSON, for inspection and bug reports.
#include "hosts/yearplan/commands/LayoutJson.h"

#include <ostream>
#include <string>
#include <utility>

#include "values/IsoDate.h"

namespace velkor {
namespace {

using Json = nlohmann::ordered_json;

Json RectJson(const Rect& rect) {
  return Json::array({rect.left, rect.top, rect.right, rect.bottom});
}

Json RowsJson(const YearGrid& grid) {
  Json rows = Json::array();
  for (int row = 1; row <= MonthRows; ++row) {
    const int month = grid.Span().MonthOfRow(row);
    rows.push_back({{"row", row},
                    {"month", month},
                    {"year", grid.Span().YearOfMonth(month)},
                    {"dayOffset", grid.Columns().RowDayOffset[row]},
                    {"lastColumn", grid.Columns().RowLastColumn[row]},
                    {"bands", grid.Layout().BandsOf(row)},
                    {"total", grid.Layout().BandsInRow[row]}});
  }
  return rows;
}

/// Where the bars of each event stand in the layout, by event.
using BarsOfEvents = std::vector<std::vector<std::size_t>>;

BarsOfEvents BarsByEvent(const YearGrid& grid) {
  BarsOfEvents bars(grid.Events().Count());
  for (std::size_t i = 0; i < grid.Layout().bars.size(); ++i) {
    bars[grid.Layout().bars[i].event].push_back(i);
  }
  return bars;
}

Json EventJson(const YearGrid& grid, std::size_t index, const std::vector<std::size_t>& bars,
               EventDetail detail) {
  const CalEvent& event = grid.Events()[index];
  Json json{{"id", event.EventID}, {"start", ToIso(event.StartDate)}};
  if (detail == EventDetail::Texts) {
    json["end"] = ToIso(event.EndDate);
    json["subject"] = event.Subject;
    json["categories"] = event.Categories;
  }
  json["catIndex"] = event.CatIndex;
  json["startMonth"] = event.StartMonth;
  json["startDay"] = event.StartDay;
  json["endMonth"] = event.EndMonth;
  json["endDay"] = event.EndDay;
  json["band"] = event.Band;
  json["shown"] = IsShown(event, grid.Filter());
  json["segments"] = Json::array();
  for (const std::size_t at : bars) {
    const Bar& bar = grid.Layout().bars[at];
    json["segments"].push_back({bar.row, bar.first, bar.last});
  }
  return json;
}

Json BarJson(const YearGrid& grid, const Bar& bar) {
  return {{"event", bar.event},
          {"row", bar.row},
          {"band", bar.band},
          {"rect", RectJson(BarRect(bar, grid.Geometry(), grid.Layout()))}};
}

Json DaysOffJson(const std::vector<DayOff>& days) {
  Json json = Json::array();
  for (const DayOff& day : days) {
    json.push_back({{"first", ToIso(day.first)}, {"last", ToIso(day.last)}, {"name", day.name}});
  }
  return json;
}

/// Visits the members of the whole in order: `member(name, json)`, and for a list of which there
/// may be many `list(name, count, entry)`, where `entry(index)` is one of them.
template <typename Member, typename List>
void ForEachMember(const YearGrid& grid, Date today, EventDetail detail, Member&& member,
                   List&& list) {
  const GridGeometry& geometry = grid.Geometry();
  const BarsOfEvents bars = BarsByEvent(grid);
  Json todayJson = Json::array();
  if (const auto mark = grid.TodayMarkAt(today)) {
    todayJson = {RectJson(mark->shadow), RectJson(mark->frame)};
  }
  member("rows", RowsJson(grid));
  list("events", grid.Events().Count(),
       [&](std::size_t index) { return EventJson(grid, index, bars[index], detail); });
  member("grid", {{"bandHeight", double{geometry.BandHeight}},
                  {"gridWidth", geometry.GridWidth},
                  {"columnWidth", double{geometry.ColumnWidth}},
                  {"scroll", geometry.scroll}});
  list("bars", grid.Layout().bars.size(),
       [&](std::size_t index) { return BarJson(grid, grid.Layout().bars[index]); });
  member("today", std::move(todayJson));
  if (const std::vector<DayOff>& days = grid.OffDays().All(); !days.empty()) {
    member("daysOff", DaysOffJson(days));
  }
}

std::string Text(const Json& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace

Json LayoutJson(const YearGrid& grid, Date today, EventDetail detail) {
  Json json = Json::object();
  ForEachMember(
      grid, today, detail, [&](const char* name, Json&& member) { json[name] = std::move(member); },
      [&](const char* name, std::size_t count, const auto& entry) {
        Json& entries = json[name] = Json::array();
        for (std::size_t i = 0; i < count; ++i) entries.push_back(entry(i));
      });
  return json;
}

void PrintLayoutJson(std::ostream& out, const YearGrid& grid, Date today, const Json& more) {
  const char* before = "{";
  const auto member = [&](const char* name, const Json& json) {
    out << std::exchange(before, ",\n") << '"' << name << "\": " << Text(json);
  };
  ForEachMember(grid, today, EventDetail::Texts, member,
                [&](const char* name, std::size_t count, const auto& entry) {
                  out << std::exchange(before, ",\n") << '"' << name << "\": [";
                  for (std::size_t i = 0; i < count; ++i) {
                    out << (i == 0 ? "\n" : ",\n") << Text(entry(i));
                  }
                  out << ']';
                });
  for (const auto& [name, json] : more.items()) member(name.c_str(), json);
  out << "}\n";
}

Json HitsJson(const YearGrid& grid, const std::vector<Point>& points) {
  Json hits = Json::array();
  for (const Point& point : points) {
    const auto hit = grid.HitTestAt(point);
    if (!hit) {
      hits.push_back(nullptr);
      continue;
    }
    const auto event = grid.EventAt(*hit);
    hits.push_back({{"row", hit->row},
                    {"band", hit->band},
                    {"column", hit->column},
                    {"event", event ? Json(*event) : Json(nullptr)}});
  }
  return hits;
}

}  // namespace velkor
