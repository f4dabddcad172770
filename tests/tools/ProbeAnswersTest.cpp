// tests/tools/ProbeAnswersTest.cpp: the recorded answers to the cases of tests/data, by which most
// rules of span, view, print and exchange are held, and lines that are no case.
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
  for (const char* name : {"probe-examples.jsonl", "probe-cases.jsonl"}) {
    std::ifstream file(std::string(TEST_DATA) + name, std::ios::binary);
    for (std::string line; std::getline(file, line);) {
      const Json example = Json::parse(line);
      const Json& probeCase = example.at("case");
      const std::string kind = probeCase.at("kind").get<std::string>();
      ++cases.at(kind);
      const Json answer = Json::parse(AnswerCase(probeCase.dump()));
      EXPECT_EQ(Difference(answer, example.at("answer"), kind), "") << probeCase.at("name");
    }
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

}  // namespace
}  // namespace velkor
