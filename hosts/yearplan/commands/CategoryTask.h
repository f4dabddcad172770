// hosts/yearplan/commands/CategoryTask.h: what `yearplan categories` is to do.
#pragma once

#include <string>
#include <vector>

#include "values/Colour.h"

namespace velkor {

struct CategoryTask {
  enum class Kind { List, New, Rename, Recolour, Delete };
  Kind kind = Kind::List;
  /// The category; of a new one the name that it gets.
  std::string name;
  /// What Rename makes of it.
  std::string newName;
  /// Rename leaves the appointments as they are.
  bool listOnly = false;
  /// What Recolour gives it.
  Colour colour;
};

/// Parses what stands after the calendar: nothing, or a task and what it takes. Throws UsageError.
CategoryTask ParseCategoryTask(const std::vector<std::string>& words);

/// As in "#3366CC", red first.
std::string ColourText(Colour colour);

}  // namespace velkor
