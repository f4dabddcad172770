// categories/ColourList.h: the text of a colour record, as lines and as categories.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/CategoryTable.h"
#include "values/Error.h"

namespace velkor {

/// A body without the blanks and control characters around it.
std::string_view TrimColourList(std::string_view body);

/// Splits the body of a colour record into lines, the header first; blanks and control characters
/// around the body do not count. An empty body gives no lines.
std::vector<std::string> SplitColourList(std::string_view body);

struct ListedCategories {
  /// All of the list, or those before the line that `fault` tells of.
  std::vector<Category> categories;
  /// Names the line, counted from 1 with the header: one without "|" or with a colour that is no
  /// number (TypeMismatch), a colour beyond 32 bits or more categories than a table holds
  /// (Overflow).
  std::optional<Error> fault;
};

/// The categories of a colour list, its header line left out.
ListedCategories CategoriesOf(const std::vector<std::string>& lines);

/// The body of a colour record. Names hold no "|" and no line break.
std::string ColourListText(const std::vector<Category>& categories);

/// What a new colour record lists.
std::vector<Category> DefaultCategories();

/// The names of a list's lines: what stands before the first "|" of each line but the header.
std::vector<std::string> CategoryNamesOf(const std::vector<std::string>& lines);

}  // namespace velkor
