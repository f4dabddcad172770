// values/NameList.h: lists of category names, as vectors and as texts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velkor {

/// Whether one of the names in a text is this one, letter for letter but for blanks around.
/// @param separator  what joins the names; not empty
bool HasName(std::string_view names, std::string_view separator, std::string_view name);

/// The names with `to` in place of `from`; it then stands there once. The others stay as they are.
std::vector<std::string> WithNameReplaced(std::vector<std::string> names, std::string_view from,
                                          std::string_view to);
/// The same for a text of names that a separator joins.
std::string WithNameReplaced(std::string_view names, std::string_view separator,
                             std::string_view from, std::string_view to);

}  // namespace velkor
