// tests/tools/ProbeAnswersTest.cpp: the probe's recorded answers, and lines that are no case.
#include "tools/ProbeAnswers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

namespace velkor {
namespace {

using Json = nlohmann::json;

bool SameNumber(const Json& actual, const Json& expected) {
  if (actual.is_number_integer() && expected.is_number_integer()) return actual == expected;
  const double difference = std::fabs(actual.get<double>() - expected.get<double>());
  return difference <= std::max(0.05, 1e-5 * std::fabs(expected.get<double>()));
}

/// Where two values first differ, as a JSON pointer with both; empty when they match.
std::string Difference(const Json& actual, const Json& expected, const std::string& at) {
  if (expected.is_number() && actual.is_number()) {
    if (SameNumber(actual, expected)) return {};
  } else if (expected.is_structured() && actual.type() == expected.type() &&
             actual.size() == expected.size()) {
    for (const auto& [key, value] : expected.items()) {
      const Json::json_pointer place("/" + key);
      if (!actual.contains(place)) return at + "/" + key + " is missing";
      std::string inside = Difference(actual.at(place), value, at + "/" + key);
      if (!inside.empty()) return inside;
    }
    return {};
  } else if (actual == expected) {
    return {};
  }
  return at + ": " + actual.dump() + " instead of " + expected.dump();
}

TEST(ProbeAnswers, AgreeWithTheRecordedOnes) {
  std::map<std::string, int> cases{
      {"dates", 0},     {"filter", 0},     {"catindex", 0},  {"text", 0},   {"sort", 0},
      {"cachename", 0}, {"cachewrite", 0}, {"cacheread", 0}, {"layout", 0}, {"pointer", 0},
      {"colours", 0},   {"alllists", 0},   {"options", 0},   {"xml", 0},    {"storedfilter", 0},
      {"edits", 0},     {"pages", 0}};
  std::ifstream file(TEST_DATA "probe-examples.jsonl", std::ios::binary);
  for (std::string line; std::getline(file, line);) {
    const Json example = Json::parse(line);
    const Json& probeCase = example.at("case");
    const auto kind = cases.find(probeCase.at("kind").get<std::string>());
    if (kind == cases.end()) continue;
    ++kind->second;
    const Json answer = Json::parse(AnswerCase(probeCase.dump()));
    EXPECT_EQ(Difference(answer, example.at("answer"), kind->first), "");
  }
  for (const auto& [kind, count] : cases) EXPECT_GT(count, 0) << "no example of " << kind;
}

TEST(ProbeAnswers, WhatIsNoCaseIsAnsweredWithAnErrorAndTheNextLineGoesOn) {
  std::istringstream lines("\xFF\n" + std::string(100'000, '[') + R"(

{
[]
3
{"kind": 3}
{"kind": "\ud800"}
{"kind": "no such kind"}
{"kind": "dates"}
{"kind": "sort", "texts": "a"}
{"kind": "sort", "texts": [1]}
{"kind": "cacheread", "bytes": "\u0100"}
{"kind": "dates", "view": {"year": 2005, "firstMonth": 13}, "dates": [], "cells": []}
{"kind": "dates", "view": {"year": 2005, "firstMonth": 1}, "dates": ["2005-02-29"], "cells": []}
{"kind": "dates", "view": {"year": 2005, "firstMonth": 1}, "dates": [], "cells": [[38, 1]]}
{"kind": "dates", "view": {"year": 4294969301, "firstMonth": 1}, "dates": [], "cells": []}
{"kind": "dates", "view": {"year": 2005, "firstMonth": 1.5}, "dates": [], "cells": []}
{"kind": "dates", "view": {"year": 9999, "firstMonth": 2}, "dates": [], "cells": []})");
  for (std::string line; std::getline(lines, line);) {
    const Json answer = Json::parse(AnswerCase(line));
    ASSERT_TRUE(answer.is_object()) << line;
    EXPECT_EQ(answer.size(), 1U) << line;
    EXPECT_NE(answer.value("error", ""), "") << line;
  }
  EXPECT_EQ(AnswerCase(R"({"kind": "sort", "texts": ["b", "a"]})"), R"(["a","b"])");
}

/// A surface on which a column is 300 twips wide and a band 300 high; January 2006 takes columns 1
/// to 31. One event is on the 3rd and the 4th.
Json YearCase(const char* kind) {
  Json probeCase = Json::parse(R"({
      "view": {"year": 2006, "firstMonth": 1}, "separator": ",", "hideNonCategory": false,
      "allEvents": false, "filter": {"text": "", "matchAll": false},
      "categories": [{"name": "Other", "colour": 255}],
      "events": [{"id": "A", "subject": "", "categories": "", "start": "2006-01-03T00:00:00",
                  "end": "2006-01-05T00:00:00"}],
      "surface": {"width": 11550, "height": 14685, "pixelWidth": 15, "pixelHeight": 15,
                  "scrollWidth": 255},
      "today": "2007-01-01T00:00:00"})");
  probeCase["kind"] = kind;
  return probeCase;
}

TEST(ProbeAnswers, LayoutTellsBarsWithTheirRectanglesAndWhatLiesUnderAPoint) {
  Json probeCase = YearCase("layout");
  probeCase["points"] = Json::parse("[[750, 450], [750, 750], [-600, 450]]");
  const Json answer = Json::parse(AnswerCase(probeCase.dump()));
  EXPECT_EQ(answer.at("events").at(0).at("segments"), Json::parse("[[1, 2, 4]]"));
  EXPECT_EQ(answer.at("bars"),
            Json::parse(R"([{"event": 0, "row": 1, "band": 2, "rect": [615, 315, 1185, 585]}])"));
  EXPECT_EQ(answer.at("today"), Json::array());
  EXPECT_EQ(answer.at("hits"), Json::parse(R"([{"row": 1, "band": 2, "column": 3, "event": 0},
                                               {"row": 1, "band": 3, "column": 3, "event": null},
                                               null])"));
}

TEST(ProbeAnswers, PointerTellsTheEventThatAClickOpensWhereNothingIsSelected) {
  Json probeCase = YearCase("pointer");
  probeCase["selectionEnabled"] = false;
  probeCase["actions"] =
      Json::parse(R"([["release"], ["move", 750, 450], ["menu"], ["press"], ["release"]])");
  const Json answer = Json::parse(AnswerCase(probeCase.dump()));
  const Json menu{{"mnuDelete", true}, {"mnuEdit", true}, {"mnuClear", false}};
  const Json results{nullptr, nullptr, menu, nullptr, {{"open", 0}}};
  ASSERT_EQ(answer.size(), results.size());
  for (std::size_t i = 0; i < results.size(); ++i) {
    const bool moved = i > 0;
    EXPECT_EQ(answer[i], (Json{{"row", moved ? 1 : 0},
                               {"column", moved ? 3 : 0},
                               {"band", moved ? 2 : 0},
                               {"dragging", false},
                               {"event", moved ? Json(0) : Json(nullptr)},
                               {"label", moved ? Json{"2006-01-03"} : Json::array()},
                               {"result", results[i]}}));
  }
  // A selection ends on the day after its last one; after 31 December 9999 there is none.
  Json last = probeCase;
  last["view"]["year"] = 9999;
  last["selectionEnabled"] = true;
  last["actions"] = Json::parse(R"([["move", 10050, 13650], ["press"]])");
  EXPECT_EQ(Json::parse(AnswerCase(last.dump())).back()["label"], Json::array({"9999-12-31"}));
  last["actions"].push_back({"release"});
  EXPECT_EQ(AnswerCase(last.dump()), R"({"failure":"overflow"})");
  for (const char* action : {R"(["click"])", R"(["move", 1])", R"(["move", "a", 1])", "[]", "3"}) {
    probeCase["actions"] = {Json::parse(action)};
    EXPECT_TRUE(Json::parse(AnswerCase(probeCase.dump())).contains("error")) << action;
  }
}

TEST(ProbeAnswers, OptionsAreTypedAndAcceptedAndFailWhereTheyCannotBeLoaded) {
  Json probeCase = Json::parse(R"({"kind": "options", "store": {}, "title": "", "firstMonth": 1,
      "displaySubject": false, "actions": [{"do": "key", "box": "Bands", "text": "1a.5"},
      {"do": "ok", "boxes": {"Left Margin": "abc"}, "start": 10, "end": 3}, {"do": "cancel"}]})");
  const Json answer = Json::parse(AnswerCase(probeCase.dump()));
  EXPECT_EQ(answer.at(2).at("store").at("Bands"), "315");
  EXPECT_EQ(answer.at(2).at("shown").at("Left Margin"), "0");
  EXPECT_EQ(answer.at(2).at("told").size(), 1U);
  EXPECT_EQ(answer.at(3).at("shown").at("Left Margin"), "20.0");
  probeCase["store"] = {{"Bands", "32767"}};
  EXPECT_EQ(AnswerCase(probeCase.dump()), R"({"failure":"overflow"})");
}

}  // namespace
}  // namespace velkor
