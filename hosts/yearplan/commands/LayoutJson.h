// hosts/yearplan/commands/LayoutJson.h: a laid-out year as JSON, for inspection and bug reports.
#pragma once

#include <iosfwd>
#include <nlohmann/json.hpp>
#include <vector>

#include "values/Date.h"
#include "values/Twips.h"
#include "view/YearGrid.h"

namespace velkor {

enum class EventDetail {
  /// Identifier, start and the derived fields.
  Fields,
  /// Also end, subject and categories.
  Texts,
};

/// Rows with their bands, events with every derived field and their segments, sizes, bars and the
/// mark of `today` in twips of the grid. The grid is laid out and sized.
nlohmann::ordered_json LayoutJson(const YearGrid& grid, Date today, EventDetail detail);

/// Prints the same with texts, an event or a bar a line, and the members of `more` after them. A
/// year of many events takes little more memory than its longest line.
void PrintLayoutJson(std::ostream& out, const YearGrid& grid, Date today,
                     const nlohmann::ordered_json& more);

/// What lies under each point: null outside the grid.
nlohmann::ordered_json HitsJson(const YearGrid& grid, const std::vector<Point>& points);

}  // namespace velkor
