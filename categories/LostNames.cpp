// categories/LostNames.cpp: category names that were saved as question marks.
#include "categories/LostNames.h"

#include <set>
#include <vector>

#include "categories/ColourList.h"
#include "categories/ColourRecords.h"
#include "categories/FirstColours.h"
#include "support/CodePage1252.h"
#include "values/Text.h"

namespace velkor {

std::string RemarkOnLostNames(OutlookFolder& folder, LocaleApi& locale, std::string_view titleName,
                              std::string_view separator) {
  const auto list = ColourRecords(folder, locale).FindList(titleName);
  if (!list) return {};
  const std::vector<std::string> names = CategoryNamesOf(*list);
  const std::set<std::string, std::less<>> listed(names.begin(), names.end());
  std::set<std::string> lost;
  for (const std::string& text : CategoryTextsOf(folder)) {
    ForEachPiece(text, separator, [&](std::string_view piece) {
      const std::string category(Trim(piece));
      const std::string saved = FromCodePage1252(ToCodePage1252(category));
      if (saved != category && listed.contains(saved) && !listed.contains(category)) {
        lost.insert(saved + "\" for \"" + category);
      }
      return true;
    });
  }
  if (lost.empty()) return {};
  std::string quoted;
  for (const std::string& name : lost) quoted += (quoted.empty() ? "\"" : ", \"") + name + "\"";
  return "An earlier version saved category names without some of their letters: " + quoted +
         ". They stay as they are until you rename them.";
}

}  // namespace velkor
