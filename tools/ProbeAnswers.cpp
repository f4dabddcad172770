// tools/ProbeAnswers.cpp: answers to the probe's cases, by the core's own functions.
#include "tools/ProbeAnswers.h"

#include <array>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "categories/StoredFilter.h"
#include "hosts/yearplan/commands/LayoutJson.h"
#include "model/CacheFile.h"
#include "model/CachePaths.h"
#include "model/CacheRecord.h"
#include "platform/headless/FixedLocale.h"
#include "platform/headless/MemoryFiles.h"
#include "platform/headless/MemorySettings.h"
#include "span/Duplicates.h"
#include "span/Globals.h"
#include "span/Locale.h"
#include "support/modFileIO.h"
#include "tools/ColourAnswers.h"
#include "tools/EditAnswers.h"
#include "tools/OptionsAnswer.h"
#include "tools/PagesAnswer.h"
#include "tools/PointerAnswer.h"
#include "tools/ProbeCase.h"
#include "tools/XmlAnswer.h"
#include "values/Error.h"
#include "values/IsoDate.h"
#include "values/Text.h"

namespace velkor {
namespace {

using Json = nlohmann::ordered_json;

/// One character for each byte.
std::string BytesOf(const std::string& text) {
  std::string bytes;
  for (std::string_view rest = text; !rest.empty();) {
    const char32_t c = TakeCharacter(rest);
    if (c > 0xFF) throw BadCase("a character of \"bytes\" is no byte");
    bytes.push_back(static_cast<char>(c));
  }
  return bytes;
}

Json AnswerDates(const Json& json) {
  const DisplaySpan span = SpanOf(json.at("view"));
  const MonthColumns columns(span);
  Json answer{{"start", ToIso(span.ViewStartDate())},
              {"end", ToIso(span.ViewEndDate())},
              {"lastMonth", span.LastMonthOfView()}};
  for (int row = 0; row <= MonthRows; ++row) answer["rows"].push_back(span.MonthOfRow(row));
  for (int row = 1; row <= MonthRows; ++row) {
    answer["offsets"].push_back(columns.RowDayOffset[row]);
    answer["lastColumns"].push_back(columns.RowLastColumn[row]);
  }
  for (int month = 1; month <= 12; ++month) {
    answer["months"].push_back({{"month", month},
                                {"row", span.RowOfMonth(month)},
                                {"year", span.YearOfMonth(month)},
                                {"days", span.DaysInMonth(month)},
                                {"firstWeekday", span.FirstWeekdayOfMonth(month)}});
  }
  answer["dates"] = Json::array();
  for (const Json& entry : ListOf(json.at("dates"))) {
    const Date date = DateOf(entry);
    answer["dates"].push_back({{"inView", span.IsDateInView(date)},
                               {"viewYear", span.ViewYearOf(date)},
                               {"monthIndex", span.MonthIndexOf(date)},
                               {"hasTime", HasTimeOfDay(date)}});
  }
  answer["cells"] = Json::array();
  for (const Json& cell : ListOf(json.at("cells"))) {
    const int column = WholeNumber(cell.at(0), 1, GridColumns);
    const int row = WholeNumber(cell.at(1), 1, MonthRows);
    answer["cells"].push_back(ToIso(span.DateAtCell(column, row)));
  }
  return answer;
}

Json AnswerFilter(const Json& json) {
  const CategoryFilter filter = FilterOf(json.at("separator"), json.at("filter").get<std::string>(),
                                         json.at("matchAll").get<bool>());
  Json answer{{"display", filter.GetCategoryFilterText()},
              {"entries", filter.CategoryFilterList()},
              {"tip", filter.ToolTip()},
              {"hidden", Json::array()}};
  for (const Json& categories : ListOf(json.at("categories"))) {
    answer["hidden"].push_back(filter.IsFilteredOut(categories.get<std::string>()));
  }
  return answer;
}

Json AnswerStoredFilter(const Json& json) {
  MemorySettings settings;
  for (const auto& [key, name] : {std::pair{"Active", "active"}, {"UsingAND", "usingAnd"}}) {
    const Json& value = json.at(name);
    if (!value.is_null()) {
      settings.Save("Year Planner", "Filtering Default", key, value.get<std::string>());
    }
  }
  const CategoryFilter filter =
      LoadFilter(settings, "Default", CategorySeparator(json.at("separator").get<std::string>()));
  return {{"filter", filter.GetCategoryFilter()},
          {"matchAll", filter.GetFilterMode()},
          {"display", filter.GetCategoryFilterText()},
          {"tip", filter.ToolTip()}};
}

Json AnswerCatIndex(const Json& json) {
  std::vector<Category> categories;
  for (const Json& name : ListOf(json.at("names")))
    categories.push_back({name.get<std::string>(), {}});
  const CategoryTable table(std::move(categories));
  const std::string separator = CategorySeparator(json.at("separator").get<std::string>());
  const bool hide = json.at("hideNonCategory").get<bool>();
  Json answer = Json::array();
  for (const Json& text : ListOf(json.at("categories"))) {
    answer.push_back(table.CatIndexOf(text.get<std::string>(), separator, hide));
  }
  return answer;
}

Json AnswerText(const Json& json) {
  FixedLocale locale;
  const CodePage page = locale.AnsiCodePage();
  Json answer = Json::array();
  for (const Json& entry : ListOf(json.at("texts"))) {
    const std::string text = entry.get<std::string>();
    const std::string utf8 = locale.ToCodePage(Locale::Utf8Encode(locale, text), page);
    answer.push_back({{"strip", Globals::StripControlChars(text)},
                      {"safe", modFileIO::MakeFileNameSafe(text)},
                      {"utf8", TextOfBytes(utf8)},
                      {"ansi", TextOfBytes(locale.ToCodePage(text, page))}});
  }
  return answer;
}

Json AnswerSort(const Json& json) {
  auto texts = json.at("texts").get<std::vector<std::string>>();
  Duplicates::SortStrings(texts, 0, static_cast<int>(texts.size()) - 1);
  return texts;
}

Json AnswerCacheName(const Json& json) {
  FixedLocale locale;
  const std::string folder = json.at("folder").get<std::string>();
  return {{"name", CacheFileName(json.at("user").get<std::string>(), WholeNumber(json.at("year")),
                                 folder, locale)},
          {"checksum", FolderChecksum(folder, locale)}};
}

Json AnswerCacheWrite(const Json& json) {
  const CachePaths paths{"cache.tmp", "~cache.tmp"};
  MemoryFiles files;
  FixedLocale locale;
  CacheFile(files, locale).Rewrite(paths, EventCollection(EventsOf(json.at("events"))));
  return TextOfBytes(files.contents.at(paths.cacheFile));
}

Json AnswerCacheRead(const Json& json) {
  MemoryFiles files;
  files.contents["cache.tmp"] = BytesOf(json.at("bytes").get<std::string>());
  FixedLocale locale;
  const DisplaySpan span;
  const CategoryTable none;
  EventCollection events;
  CacheFile(files, locale).Load("cache.tmp", EventFields{span, MonthColumns(span), none}, events);
  Json answer = Json::array();
  for (const CalEvent& event : events) {
    answer.push_back({{"id", event.EventID},
                      {"subject", event.Subject},
                      {"categories", event.Categories},
                      {"start", ToIso(event.StartDate)},
                      {"end", ToIso(event.EndDate)}});
  }
  return answer;
}

Json AnswerLayout(const Json& json) {
  const YearGrid grid = GridOf(json);
  std::vector<Point> points;
  for (const Json& point : ListOf(json.at("points"))) {
    points.push_back({point.at(0).get<double>(), point.at(1).get<double>()});
  }
  Json answer = LayoutJson(grid, DateOf(json.at("today")), EventDetail::Fields);
  answer["hits"] = HitsJson(grid, points);
  return answer;
}

using Answer = Json (*)(const Json&);
constexpr std::array<std::pair<std::string_view, Answer>, 17> Kinds{{
    {"dates", AnswerDates},
    {"filter", AnswerFilter},
    {"storedfilter", AnswerStoredFilter},
    {"catindex", AnswerCatIndex},
    {"text", AnswerText},
    {"sort", AnswerSort},
    {"cachename", AnswerCacheName},
    {"cachewrite", AnswerCacheWrite},
    {"cacheread", AnswerCacheRead},
    {"layout", AnswerLayout},
    {"pointer", AnswerPointer},
    {"colours", AnswerColours},
    {"alllists", AnswerAllLists},
    {"edits", AnswerEdits},
    {"xml", AnswerXml},
    {"pages", AnswerPages},
    {"options", AnswerOptions},
}};

Json AnswerOf(std::string_view line) {
  // Deeper than any case: what walks through nested values must not run out of stack.
  constexpr int DeepestNesting = 64;
  const auto checkDepth = [](int depth, Json::parse_event_t, Json&) {
    if (depth > DeepestNesting) throw BadCase("lists and objects are nested too deeply");
    return true;
  };
  const Json json = Json::parse(line, checkDepth);
  const std::string kind = json.at("kind").get<std::string>();
  for (const auto& [name, answer] : Kinds) {
    if (name == kind) return answer(json);
  }
  throw BadCase("unknown kind \"" + kind + "\"");
}

}  // namespace

std::string AnswerCase(std::string_view line) {
  Json answer;
  try {
    answer = AnswerOf(line);
  } catch (const Error& error) {
    answer = {{"failure", error.Number() == errors::Overflow ? "overflow" : error.Description()}};
  } catch (const std::exception& error) {
    answer = {{"error", error.what()}};
  }
  return answer.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace velkor
