// categories/ColourList.h: the text of a colour record, as lines and as categories.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/CategoryTable.h"

namespace velkor {

/// Splits the body of a colour record into lines, the header first; blanks and control characters
/// around the body do not count. An empty body gives no lines.
std::vector<std::string> SplitColourList(std::string_view body);

/// The categories of a colour list, its header line left out. Throws Error (TypeMismatch) that
/// names the line for a line without "|" or with a colour that is no signed 32-bit integer.
std::vector<Category> CategoriesOf(const std::vector<std::string>& lines);

}  // namespace velkor
