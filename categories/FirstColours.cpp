// categories/FirstColours.cpp: the colours of a calendar that holds none yet.
#include "categories/FirstColours.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "categories/ColourList.h"
#include "categories/ColourRecords.h"
#include "platform/Outlook.h"
#include "span/Globals.h"
#include "values/Text.h"

namespace velkor {
namespace {

/// At least 20 apart (CIE 1976) from each other and from the grid's own colours, also as seen with
/// protanopia, deuteranopia and tritanopia; the ones furthest apart come first.
constexpr std::array<Colour, 14> Palette{{
    Colour::FromRgb(0x12, 0x8A, 0xFF),
    Colour::FromRgb(0xFF, 0x99, 0x0C),
    Colour::FromRgb(0x0A, 0x7F, 0x44),
    Colour::FromRgb(0xB6, 0x42, 0xAC),
    Colour::FromRgb(0x73, 0x12, 0x04),
    Colour::FromRgb(0x9A, 0xFA, 0x6B),
    Colour::FromRgb(0x2F, 0x42, 0xDC),
    Colour::FromRgb(0xF1, 0x9D, 0xFA),
    Colour::FromRgb(0x5F, 0x7D, 0x09),
    Colour::FromRgb(0x50, 0x0D, 0x90),
    Colour::FromRgb(0x20, 0xC0, 0x60),
    Colour::FromRgb(0x98, 0x6C, 0x83),
    Colour::FromRgb(0x04, 0x42, 0x3B),
    Colour::FromRgb(0x5E, 0x14, 0x64),
}};

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
  byFrequency.resize(std::min(byFrequency.size(), Palette.size()));

  std::vector<Category> categories;
  for (const auto& [name, count] : byFrequency) {
    categories.push_back({name, Palette[categories.size()]});
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
