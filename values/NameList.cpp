// values/NameList.cpp: finds and replaces single names in a list.
#include "values/NameList.h"

#include <algorithm>

#include "values/Text.h"

namespace velkor {

bool HasName(std::string_view names, std::string_view separator, std::string_view name) {
  return !ForEachPiece(names, separator,
                       [&](std::string_view piece) { return Trim(piece) != name; });
}

std::vector<std::string> WithNameReplaced(std::vector<std::string> names, std::string_view from,
                                          std::string_view to) {
  const auto is = [](std::string_view name) {
    return [name](const std::string& one) { return Trim(one) == name; };
  };
  const auto first = std::find_if(names.begin(), names.end(), is(from));
  if (first == names.end()) return names;
  const bool isThere = std::any_of(names.begin(), names.end(), is(to));
  if (!isThere) *first = to;
  std::erase_if(names, is(from));
  return names;
}

std::string WithNameReplaced(std::string_view names, std::string_view separator,
                             std::string_view from, std::string_view to) {
  std::string text;
  for (const std::string& name : WithNameReplaced(Split(names, separator), from, to)) {
    if (!text.empty()) text += separator;
    text += name;
  }
  return text;
}

}  // namespace velkor
