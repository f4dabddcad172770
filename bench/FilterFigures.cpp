// bench/FilterFigures.cpp: the filter test against a pass that only splits the texts.
#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "bench/Comparison.h"
#include "bench/Figures.h"
#include "bench/SampleEvents.h"
#include "span/CategoryFilter.h"
#include "values/Text.h"

namespace velkor {
namespace {

constexpr std::size_t Events = 100'000;
constexpr double Limit = 3;

using Names = std::array<std::string_view, 20>;

/// The names that sample events carry, among others.
constexpr Names Carried{"Leave",   "Trip",       "Training", "Birthday", "Holidays",
                        "Other",   "Work",       "Customer", "Project",  "Family",
                        "Doctor",  "Conference", "Sport",    "Travel",   "Deadline",
                        "Private", "Urgent",     "School",   "Meeting",  "Anniversary"};
/// As long as those and alike, but no event carries one.
constexpr Names Absent{"Leavf",   "Trio",       "Traininh", "Birthdaz", "Holidayr",
                       "Othes",   "Worl",       "Customes", "Projecu",  "Familz",
                       "Doctos",  "Conferencf", "Sporu",    "Travem",   "Deadlinf",
                       "Privatf", "Urgenu",     "Schoom",   "Meetinh",  "Anniversarz"};

std::string Joined(const Names& names) {
  std::string text;
  for (const std::string_view name : names) {
    if (!text.empty()) text += ", ";
    text += name;
  }
  return text;
}

/// Up to two categories each.
std::vector<std::string> SampleTexts() {
  std::vector<std::string> texts;
  for (CalEvent& event : SampleEvents(Events, Spread::Random)) {
    texts.push_back(std::move(event.Categories));
  }
  return texts;
}

/// All names each, in an order of their own.
std::vector<std::string> FullTexts(Names names) {
  std::mt19937 random(3);
  std::vector<std::string> texts;
  while (texts.size() < Events) {
    std::swap(names[random() % names.size()], names[random() % names.size()]);
    texts.push_back(Joined(names));
  }
  return texts;
}

void CompareWithSplitting(benchmark::State& state, const std::vector<std::string>& texts,
                          const Names& names, bool matchAll) {
  CategoryFilter filter;
  filter.SetCategoryFilter(Joined(names));
  filter.SetFilterMode(matchAll);
  const auto split = [&] {
    std::size_t letters = 0;
    for (const std::string& text : texts) {
      ForEachPiece(text, filter.FilterSeparator(), [&](std::string_view piece) {
        letters += piece.size();
        return true;
      });
    }
    benchmark::DoNotOptimize(letters);
  };
  const auto test = [&] {
    std::size_t hidden = 0;
    for (const std::string& text : texts) hidden += filter.IsFilteredOut(text) ? 1 : 0;
    benchmark::DoNotOptimize(hidden);
  };
  Compare(
      state, Limit, [&] { return SecondsOf(split); }, [&] { return SecondsOf(test); });
}

}  // namespace

void RegisterFilterFigures() {
  for (const bool matchAll : {false, true}) {
    const std::string figure =
        std::string("filter test: 100,000 events, ") + (matchAll ? "all" : "any") + " of 20, ";
    RegisterFigure(figure + "names that they carry", 61, [matchAll](benchmark::State& state) {
      CompareWithSplitting(state, SampleTexts(), Carried, matchAll);
    });
    RegisterFigure(figure + "other names", 61, [matchAll](benchmark::State& state) {
      CompareWithSplitting(state, SampleTexts(), Absent, matchAll);
    });
    RegisterFigure(figure + "each event carries all", 15, [matchAll](benchmark::State& state) {
      CompareWithSplitting(state, FullTexts(Carried), Carried, matchAll);
    });
    RegisterFigure(figure + "each event carries 20 others", 15,
                   [matchAll](benchmark::State& state) {
                     CompareWithSplitting(state, FullTexts(Absent), Carried, matchAll);
                   });
  }
}

}  // namespace velkor
