// tests/house/FileRules.cpp: opening line, length and words of a file.
#include "tests/house/FileRules.h"

#include <regex>

namespace velkor::house {
namespace {

constexpr std::size_t MostLines = 700;

struct Ban {
  std::regex words;
  std::string why;
};

const std::vector<Ban>& Bans() {
  // Each pattern is written so that it does not find itself.
  static const std::vector<Ban> All = {
      {std::regex(R"((^|[^\w.])/(work|root)/|/tmp/(wt|bash)|/home/(user|me)\b)"),
       "a path of somebody's machine"},
      {std::regex(R"((deb|security|ftp)\.debian\.org|registry\.npm[j]s|[p]ypi\.org|crates\.[i]o)"),
       "a package registry"},
      {std::regex(R"(\b(TO[D]O|FIX[M]E)\b)"), "work left undone"},
      {std::regex(R"(\bPart [1-7]\.[1-7]\b|\bspec\.md|\b([Tt]he|[Oo]ur) spec(ification)?\b)"),
       "a text that is not in this repository"},
  };
  return All;
}

}  // namespace

Findings CheckOpening(const SourceFile& file) {
  Findings findings;
  if (!IsCode(file)) return findings;
  const std::vector<std::string> lines = Lines(file.text);
  const std::string start = "// " + file.path + ": ";
  std::size_t end = 0;
  while (end < lines.size() && lines[end].starts_with("//")) ++end;
  if (end == 0 || !lines[0].starts_with(start) || lines[0].size() < start.size() + 10 ||
      !lines[end - 1].ends_with('.')) {
    findings.push_back(FindingAt(file, 1, "must open with \"" + start + "what it is for.\""));
  }
  if (IsHeader(file) && (end == lines.size() || lines[end] != "#pragma once")) {
    findings.push_back(FindingAt(file, static_cast<int>(end) + 1, "must go on with #pragma once"));
  }
  return findings;
}

Findings CheckLength(const SourceFile& file) {
  const std::size_t count = IsCode(file) ? Lines(file.text).size() : 0;
  if (count <= MostLines) return {};
  return {FindingAt(file, static_cast<int>(count), "more than 700 lines")};
}

Findings CheckWords(const SourceFile& file) {
  Findings findings;
  int number = 0;
  for (const std::string& line : Lines(file.text)) {
    ++number;
    for (const Ban& ban : Bans()) {
      if (std::regex_search(line, ban.words)) findings.push_back(FindingAt(file, number, ban.why));
    }
  }
  return findings;
}

}  // namespace velkor::house
