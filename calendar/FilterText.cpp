// calendar/FilterText.cpp: the parser of filter texts and their comparison.
#include "calendar/FilterText.h"

#include <algorithm>
#include <array>

#include "values/DateDigits.h"
#include "values/Error.h"
#include "values/Text.h"

namespace velkor {
namespace {

[[noreturn]] void Fail(std::string_view text, std::size_t position, const std::string& what) {
  throw Error(errors::CalendarFailed,
              "The filter \"" + std::string(text) + "\" cannot be used: " + what + " at position " +
                  std::to_string(position + 1) + ".",
              "Calendar");
}

class Parser {
 public:
  Parser(std::string_view text, DateOrder order) : text_(text), order_(order) {}

  Filter Conditions() {
    Filter filter;
    while (true) {
      filter.push_back(Condition());
      SkipBlanks(text_.size());
      if (at_ == text_.size()) return filter;
      const std::size_t word = at_;
      while (at_ < text_.size() && IsLetter(text_[at_])) ++at_;
      if (!SameName(text_.substr(word, at_ - word), "and")) {
        Fail(text_, word, "AND or the end is expected");
      }
    }
  }

 private:
  FilterCondition Condition() {
    FilterCondition condition;
    SkipBlanks(text_.size());
    condition.property = Property();
    SkipBlanks(text_.size());
    condition.op = Operator();
    SkipBlanks(text_.size());
    const std::string_view value = Quoted();
    if (condition.property == FilterProperty::Start || condition.property == FilterProperty::End) {
      const std::size_t after = at_;
      const auto begin = static_cast<std::size_t>(value.data() - text_.data());
      condition.date = DateValue(begin, begin + value.size());
      at_ = after;
    } else {
      condition.text = std::string(value);
    }
    return condition;
  }

  FilterProperty Property() {
    struct Name {
      std::string_view name;
      FilterProperty property;
    };
    static constexpr std::array<Name, 5> Names{{{"Start", FilterProperty::Start},
                                                {"End", FilterProperty::End},
                                                {"Subject", FilterProperty::Subject},
                                                {"Categories", FilterProperty::Categories},
                                                {"MessageClass", FilterProperty::MessageClass}}};
    const std::size_t open = at_;
    if (at_ == text_.size() || text_[at_] != '[')
      Fail(text_, at_, "a property in brackets is expected");
    const std::size_t close = text_.find(']', open);
    if (close == std::string_view::npos) Fail(text_, open, "the bracket is not closed");
    const std::string_view name = text_.substr(open + 1, close - open - 1);
    for (const Name& known : Names) {
      if (SameName(name, known.name)) {
        at_ = close + 1;
        return known.property;
      }
    }
    Fail(text_, open + 1, "the property \"" + std::string(name) + "\" is not known");
  }

  FilterOperator Operator() {
    const char first = at_ < text_.size() ? text_[at_] : '\0';
    const bool equal = at_ + 1 < text_.size() && text_[at_ + 1] == '=';
    switch (first) {
      case '=':
        ++at_;
        return FilterOperator::Equal;
      case '<':
        at_ += equal ? 2 : 1;
        return equal ? FilterOperator::LessOrEqual : FilterOperator::Less;
      case '>':
        at_ += equal ? 2 : 1;
        return equal ? FilterOperator::GreaterOrEqual : FilterOperator::Greater;
      default:
        Fail(text_, at_, "one of = < <= > >= is expected");
    }
  }

  std::string_view Quoted() {
    if (at_ == text_.size() || (text_[at_] != '"' && text_[at_] != '\'')) {
      Fail(text_, at_, "a value in quotes is expected");
    }
    const std::size_t close = text_.find(text_[at_], at_ + 1);
    if (close == std::string_view::npos) Fail(text_, at_, "the quote is not closed");
    const std::string_view value = text_.substr(at_ + 1, close - at_ - 1);
    at_ = close + 1;
    return value;
  }

  /// The date that fills the text from `at` to `end`.
  Date DateValue(std::size_t at, std::size_t end) {
    const std::size_t begin = at_ = at;
    std::array<int, 3> numbers{};
    const std::size_t yearPlace = order_ == DateOrder::YearMonthDay ? 0 : 2;
    SkipBlanks(end);
    for (std::size_t i = 0; i < numbers.size(); ++i) {
      if (i > 0 && SkipSeparators(end) == 0) Fail(text_, at_, "a date separator is expected");
      const std::size_t number = at_;
      numbers[i] = Number(end, i == yearPlace ? "a four-digit year" : "a day or month");
      if (i == yearPlace && at_ - number != 4) Fail(text_, number, "a four-digit year is expected");
    }
    DateFields fields;
    fields.year = numbers[yearPlace];
    fields.month = numbers[order_ == DateOrder::MonthDayYear ? 0 : 1];
    fields.day = numbers[order_ == DateOrder::MonthDayYear   ? 1
                         : order_ == DateOrder::DayMonthYear ? 0
                                                             : 2];
    if (!ExistingDate(fields)) {
      Fail(text_, begin, "\"" + std::string(text_.substr(begin, end - begin)) + "\" is no date");
    }
    SkipSeparators(end);
    if (at_ < end) TimeOfDay(end, fields);
    return Date::FromFields(fields);
  }

  void TimeOfDay(std::size_t end, DateFields& fields) {
    const std::size_t begin = at_;
    fields.hour = Number(end, "a time");
    if (at_ == end || text_[at_] != ':') Fail(text_, at_, "a colon is expected");
    ++at_;
    fields.minute = Number(end, "minutes");
    if (at_ < end && text_[at_] == ':') {
      ++at_;
      fields.second = Number(end, "seconds");
    }
    SkipBlanks(end);
    const std::size_t word = at_;
    while (at_ < end && IsLetter(text_[at_])) ++at_;
    const std::string_view half = text_.substr(word, at_ - word);
    const bool afternoon = SameName(half, "pm");
    bool valid = fields.minute <= 59 && fields.second <= 59;
    if (afternoon || SameName(half, "am")) {
      valid = valid && fields.hour >= 1 && fields.hour <= 12;
      fields.hour = fields.hour % 12 + (afternoon ? 12 : 0);
    } else if (!half.empty()) {
      Fail(text_, word, "AM or PM is expected");
    }
    SkipBlanks(end);
    if (at_ < end) Fail(text_, at_, "the end of the value is expected");
    if (!valid || fields.hour > 23) Fail(text_, begin, "the time is out of range");
  }

  int Number(std::size_t end, const std::string& what) {
    const std::size_t begin = at_;
    while (at_ < end && IsDigit(text_[at_])) ++at_;
    if (at_ == begin) Fail(text_, begin, what + " is expected");
    if (at_ - begin > 4) Fail(text_, begin, "the number is too long");
    return *DigitsOf(text_.substr(begin, at_ - begin));
  }

  /// Skips what locales put between the numbers of a date: punctuation, blanks and letters of
  /// other scripts, but no English letter.
  std::size_t SkipSeparators(std::size_t end) {
    const std::size_t begin = at_;
    while (at_ < end && !IsDigit(text_[at_]) && !IsLetter(text_[at_])) ++at_;
    return at_ - begin;
  }

  void SkipBlanks(std::size_t end) {
    while (at_ < end && text_[at_] == ' ') ++at_;
  }

  std::string_view text_;
  DateOrder order_;
  std::size_t at_ = 0;
};

/// `order` is below, at or above 0 as the item's value stands to the condition's.
bool Holds(FilterOperator op, int order) {
  switch (op) {
    case FilterOperator::Equal:
      return order == 0;
    case FilterOperator::Less:
      return order < 0;
    case FilterOperator::LessOrEqual:
      return order <= 0;
    case FilterOperator::Greater:
      return order > 0;
    case FilterOperator::GreaterOrEqual:
      return order >= 0;
  }
  return false;
}

bool DateHolds(const FilterCondition& condition, Date value) {
  const auto order = value <=> condition.date;
  return Holds(condition.op, order < 0 ? -1 : order > 0 ? 1 : 0);
}

bool TextHolds(const FilterCondition& condition, std::string_view value) {
  return Holds(condition.op, CompareText(value, condition.text));
}

bool Matches(const FilterCondition& condition, const FilteredFields& fields) {
  switch (condition.property) {
    case FilterProperty::Start:
      return DateHolds(condition, fields.start);
    case FilterProperty::End:
      return DateHolds(condition, fields.end);
    case FilterProperty::Subject:
      return TextHolds(condition, fields.subject);
    case FilterProperty::MessageClass:
      return TextHolds(condition, fields.messageClass);
    case FilterProperty::Categories:
      if (fields.categories.empty()) return TextHolds(condition, {});
      return std::any_of(fields.categories.begin(), fields.categories.end(),
                         [&](const std::string& name) { return TextHolds(condition, name); });
  }
  return false;
}

}  // namespace

Filter ParseFilter(std::string_view text, DateOrder order) {
  return Parser(text, order).Conditions();
}

bool Matches(const Filter& filter, const FilteredFields& fields) {
  return std::all_of(filter.begin(), filter.end(),
                     [&](const FilterCondition& condition) { return Matches(condition, fields); });
}

FilterBounds BoundsOf(const Filter& filter) {
  FilterBounds bounds;
  for (const FilterCondition& condition : filter) {
    if (condition.property != FilterProperty::Start && condition.property != FilterProperty::End) {
      continue;
    }
    const FilterOperator op = condition.op;
    // An item starts no later than it ends, so either property bounds both sides.
    if (op != FilterOperator::Greater && op != FilterOperator::GreaterOrEqual) {
      bounds.to = bounds.to ? std::min(*bounds.to, condition.date) : condition.date;
    }
    if (op != FilterOperator::Less && op != FilterOperator::LessOrEqual) {
      bounds.from = bounds.from ? std::max(*bounds.from, condition.date) : condition.date;
    }
  }
  return bounds;
}

}  // namespace velkor
