// calendar/FilterText.h: reads the filter texts of Restrict and Find, and applies them to an item.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/DatePattern.h"
#include "values/Date.h"

namespace velkor {

enum class FilterProperty { Start, End, Subject, Categories, MessageClass };
enum class FilterOperator { Equal, Less, LessOrEqual, Greater, GreaterOrEqual };

/// One comparison; `date` counts for Start and End, `text` for the others.
struct FilterCondition {
  FilterProperty property = FilterProperty::Start;
  FilterOperator op = FilterOperator::Equal;
  Date date;
  std::string text;
};

/// Conditions that all have to hold.
using Filter = std::vector<FilterCondition>;

/// Reads conditions `[Property] operator "value"`, joined by AND. Names and AND in any letter case;
/// operators = < <= > >=; values between double quotes or apostrophes, without the same quote
/// inside. Dates in the given order with any separators and a four-digit year, then optionally a
/// time of the 24-hour or the 12-hour clock (AM, PM).
/// Throws Error (CalendarFailed) that names what was expected and the position, from 1.
Filter ParseFilter(std::string_view text, DateOrder order);

/// What a filter looks at.
struct FilteredFields {
  Date start;
  Date end;
  std::string_view subject;
  const std::vector<std::string>& categories;
  std::string_view messageClass;
};

/// Texts compare without regard to letter case; a category condition holds when it holds for any
/// of the names, and for an item without categories when it holds for the empty text.
bool Matches(const Filter& filter, const FilteredFields& fields);

/// The stretch of time outside which no item can match: every matching item starts at or before
/// `to` and ends at or after `from`.
struct FilterBounds {
  std::optional<Date> from;
  std::optional<Date> to;
};
FilterBounds BoundsOf(const Filter& filter);

}  // namespace velkor
