// categories/FirstColours.cpp: the colours of a calendar that holds none yet.
#include "categories/FirstColours.h"

#include <algorithm>
#include <map>
#include <utility>

#include "categories/ColourList.h"
#include "categories/ColourRecords.h"
#include "categories/FirstPalette.h"
#include "platform/Outlook.h"
#include "span/Globals.h"
#include "values/Text.h"

namespace velkor {
namespace {

const Category CatchAll{"Other", Colour::FromRgb(0xCC, 0xCC, 0xCC)};

}  // namespace

CategoryTable MakeFirstCategoryTable(const std::vector<std::string>& categoryTexts,
                                     std::string_view separator) {
  std::map<std::string, int> counts;
  for (const std::string& text : categoryTexts) {
    ForEachPiece(text, separator, [&](std::string_view piece) {
      // What a colour list cannot hold is left to the last of its categories.
      const bool fits = piece.find('|') == std::string_view::npos;
      std::string name = Globals::StripControlChars(Trim(piece));
      if (fits && !name.empty() && name != CatchAll.name) ++counts[std::move(name)];
      return true;
    });
  }
  std::vector<std::pair<std::string, int>> byFrequency(counts.begin(), counts.end());
  // Stable: names that are equally frequent stay in the order of their texts.
  std::stable_sort(byFrequency.begin(), byFrequency.end(),
                   [](const auto& a, const auto& b) { return a.second > b.second; });
  byFrequency.resize(std::min(byFrequency.size(), FirstPalette.size()));

  std::vector<Category> categories;
  for (const auto& [name, count] : byFrequency) {
    categories.push_back({name, FirstPalette[categories.size()]});
  }
  categories.push_back(CatchAll);
  return CategoryTable(std::move(categories));
}

std::vector<std::string> CategoryTextsOf(OutlookFolder& folder) {
  std::vector<std::string> texts;
  const auto items = folder.Items();
  for (auto item = items->GetFirst(); item; item = items->GetNext()) {
    texts.push_back(item->Categories());
  }
  return texts;
}

std::optional<std::string> FirstColourList(OutlookFolder& folder, LocaleApi& locale,
                                           std::string_view titleName, std::string_view separator) {
  if (ColourRecords(folder, locale).Find(titleName).item) return std::nullopt;
  return ColourListText(MakeFirstCategoryTable(CategoryTextsOf(folder), separator).All());
}

}  // namespace velkor
