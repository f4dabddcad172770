// tools/PagesAnswer.cpp: how a year is cut into printed pages, and what their preview shows.
#include "tools/PagesAnswer.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "platform/headless/MemorySettings.h"
#include "print/PagePlan.h"
#include "print/PrintOptions.h"
#include "tools/ColourCalendar.h"
#include "tools/ProbeCase.h"
#include "view/BandLayout.h"

namespace velkor {
namespace {

using Json = nlohmann::ordered_json;

/// More bands than a year of events ever takes.
constexpr int MostBands = 1'000'000;

/// What the planner titled "Default" prints by.
PrintOptionSet OptionsOf(const Json& store, const DisplaySpan& span) {
  MemorySettings settings = PrintSettingsOf(store);
  UnseenMessages messages;
  PrintOptions options(settings, {.titleName = "Default", .firstMonth = span.FirstMonth});
  if (const auto failure = options.Load(messages)) throw *failure;
  return options.Values();
}

/// By `rows`, the bands that each position needs, or else by `events`.
BandRows RowsOf(const Json& json, int leastBands) {
  if (json.contains("rows")) {
    const Json& rows = ListOf(json.at("rows"));
    if (rows.size() != MonthRows) throw BadCase("\"rows\" are not as many as the months");
    std::array<int, MonthRows> needed{};
    std::transform(rows.begin(), rows.end(), needed.begin(),
                   [](const Json& bands) { return WholeNumber(bands, 0, MostBands); });
    return TotalBandRows(needed, leastBands);
  }
  const YearGrid year = YearOf(json);
  EventCollection events = year.Events();
  return LayOutBands(events, year.Rule(), year.Filter(), leastBands).BandsInRow;
}

PageMetrics MetricsOf(const Json& page) {
  return {.page = {page.at("width").get<double>(), page.at("height").get<double>()},
          .monthLabelWidth = page.at("monthLabelWidth").get<double>(),
          .dayHeaderHeight = page.at("dayHeaderHeight").get<double>(),
          .titleHeight = page.at("titleHeight").get<double>()};
}

/// Running totals.
std::vector<Twips> LegendHeightsOf(const Json& heights) {
  std::vector<Twips> totals;
  Twips total = 0;
  for (const Json& height : ListOf(heights)) totals.push_back(total += height.get<double>());
  return totals;
}

void Click(PageTurner& turner, const std::string& button) {
  if (button == "Next") {
    turner.Next();
  } else if (button == "Back") {
    turner.Back();
  } else {
    throw BadCase("unknown button \"" + button + "\"");
  }
}

template <typename Runs>
Json RunsJson(const Runs& runs) {
  Json json = Json::array();
  for (const auto& run : runs) json.push_back({run.first, run.last});
  return json;
}

}  // namespace

Json AnswerPages(const Json& json) {
  const DisplaySpan span = SpanOf(json.at("view"));
  const PrintOptionSet options = OptionsOf(json.at("store"), span);
  const Json& page = json.at("page");
  const PagePlan plan = PlanPages(options, MetricsOf(page), span, RowsOf(json, options.MinBands),
                                  LegendHeightsOf(json.at("legendHeights")));
  if (plan.failure) return {{"failure", plan.failure->message}};

  PageTurner turner;
  turner.Begin(static_cast<int>(plan.pages.size()));
  Json answer{{"grid_width", plan.geometry.gridWidth},
              {"column_width", plan.geometry.columnWidth},
              {"legend_text_width", plan.geometry.legendTextWidth},
              {"body_height", plan.geometry.bodyHeight},
              {"band_area_height", plan.geometry.bandAreaHeight},
              {"first_page_body", plan.firstPageBody},
              {"pages", RunsJson(plan.pages)},
              {"legend", RunsJson(plan.legend)},
              {"band_height", plan.bandHeight},
              {"next_enabled", turner.NextEnabled()},
              {"title", PageTitle(span.ViewYear, options.Header)}};
  for (const Json& click : ListOf(json.at("clicks"))) Click(turner, click.get<std::string>());
  answer["after"] = {
      {"page", turner.Page()},
      {"back", turner.BackEnabled()},
      {"next", turner.NextEnabled()},
      {"status", PrintStatus(turner.Page(), turner.Count(), WholeNumber(page.at("orientation")),
                             WholeNumber(page.at("paper")))}};
  return answer;
}

}  // namespace velkor
