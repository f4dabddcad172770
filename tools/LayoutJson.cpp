// tools/LayoutJson.cpp: a laid-out year as JSON, for inspection and bug reports.
#include "tools/LayoutJson.h"

#include "tools/IsoDate.h"

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

Json EventsJson(const YearGrid& grid, EventDetail detail) {
  std::vector<Json> segments(grid.Events().Count(), Json::array());
  for (const Bar& bar : grid.Layout().bars) {
    segments[bar.event].push_back({bar.row, bar.first, bar.last});
  }
  Json events = Json::array();
  for (std::size_t i = 0; i < grid.Events().Count(); ++i) {
    const CalEvent& event = grid.Events()[i];
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
    json["segments"] = std::move(segments[i]);
    events.push_back(std::move(json));
  }
  return events;
}

Json BarsJson(const YearGrid& grid) {
  Json bars = Json::array();
  for (const Bar& bar : grid.Layout().bars) {
    bars.push_back({{"event", bar.event},
                    {"row", bar.row},
                    {"band", bar.band},
                    {"rect", RectJson(BarRect(bar, grid.Geometry(), grid.Layout()))}});
  }
  return bars;
}

}  // namespace

Json LayoutJson(const YearGrid& grid, Date today, EventDetail detail) {
  const GridGeometry& geometry = grid.Geometry();
  Json todayJson = Json::array();
  if (const auto mark = grid.TodayMarkAt(today)) {
    todayJson = {RectJson(mark->shadow), RectJson(mark->frame)};
  }
  return {{"rows", RowsJson(grid)},
          {"events", EventsJson(grid, detail)},
          {"grid",
           {{"bandHeight", double{geometry.BandHeight}},
            {"gridWidth", geometry.GridWidth},
            {"columnWidth", double{geometry.ColumnWidth}},
            {"scroll", geometry.scroll}}},
          {"bars", BarsJson(grid)},
          {"today", std::move(todayJson)}};
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
