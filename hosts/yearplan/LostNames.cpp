// hosts/yearplan/LostNames.cpp: category names that were saved as question marks.
#include "hosts/yearplan/LostNames.h"

#include <algorithm>
#include <set>
#include <vector>

#include "calendar/CalendarFolder.h"
#include "categories/ColourList.h"
#include "model/ColourRecord.h"
#include "support/CodePage1252.h"

namespace velkor {
namespace {

/// The names of a title's list, of one in the older form where the title has none.
std::set<std::string> ListedNames(const CalendarFolder& folder, std::string_view titleName) {
  for (const std::string& subject :
       {colour_record::SubjectOf(titleName), std::string(colour_record::LegacySubject)}) {
    const auto& items = folder.AllItems();
    const auto record = std::find_if(items.begin(), items.end(), [&](const auto& item) {
      return item->fields.subject == subject;
    });
    if (record == items.end()) continue;
    const std::vector<std::string> names = CategoryNamesOf(SplitColourList((*record)->fields.body));
    return {names.begin(), names.end()};
  }
  return {};
}

}  // namespace

std::string RemarkOnLostNames(const CalendarFolder& folder, std::string_view titleName) {
  const std::set<std::string> listed = ListedNames(folder, titleName);
  std::set<std::string> lost;
  for (const auto& item : folder.AllItems()) {
    for (const std::string& category : item->fields.categories) {
      const std::string saved = FromCodePage1252(ToCodePage1252(category));
      if (saved != category && listed.contains(saved) && !listed.contains(category)) {
        lost.insert(saved + "\" for \"" + category);
      }
    }
  }
  if (lost.empty()) return {};
  std::string names;
  for (const std::string& name : lost) names += (names.empty() ? "\"" : ", \"") + name + "\"";
  return "An earlier version saved category names without some of their letters: " + names +
         ". They stay as they are until you rename them.";
}

}  // namespace velkor
